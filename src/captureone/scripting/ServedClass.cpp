#include "captureone/scripting/ServedClass.h"

#include <algorithm>

namespace morla::captureone {

using applescript::Code;

std::optional<ObjectReference> ServedClass::elementWithId(ObjectReference const& object, Code wanted,
                                                          std::string const& id) const {
  auto const all = elements(object, wanted);
  if (!all) return {};
  auto const found = std::ranges::find(*all, id, &ObjectReference::id);
  return found == all->end() ? std::nullopt : std::optional(*found);
}

std::variant<ObjectReference, applescript::EventError> ServedClass::make(ObjectReference const& object, Code,
                                                                         std::string) {
  return failures::cannotMake(specifier(object));
}

Failure ServedClass::remove(ObjectReference const& object) {
  return failures::notModifiable(specifier(object));
}

}  // namespace morla::captureone
