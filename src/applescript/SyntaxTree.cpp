#include "applescript/SyntaxTree.h"

namespace morla::applescript {

// Here, since a script may hold others.
Script::Script() = default;
Script::~Script() = default;
Script::Script(Script&&) noexcept = default;
Script& Script::operator=(Script&&) noexcept = default;

}  // namespace morla::applescript
