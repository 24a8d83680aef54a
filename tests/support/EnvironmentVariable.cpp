#include "support/EnvironmentVariable.h"

#include <stdlib.h>

#include <utility>

namespace morla::support {

EnvironmentVariable::EnvironmentVariable(std::string name, std::string const& value) : name_(std::move(name)) {
  if (char const* const before = ::getenv(name_.c_str())) before_ = before;
  ::setenv(name_.c_str(), value.c_str(), 1);
}

EnvironmentVariable::~EnvironmentVariable() {
  if (before_) {
    ::setenv(name_.c_str(), before_->c_str(), 1);
  } else {
    ::unsetenv(name_.c_str());
  }
}

}  // namespace morla::support
