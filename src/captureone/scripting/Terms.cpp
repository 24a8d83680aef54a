#include "captureone/scripting/Terms.h"

#include <algorithm>

namespace morla::captureone {

using applescript::Code;

Terms::Class const* Terms::findClass(Code code) const {
  auto const found = std::ranges::find(dictionary_.classes, code, &Class::code);
  return found == dictionary_.classes.end() ? nullptr : &*found;
}

Terms::Class const* Terms::findClass(std::string_view name) const {
  auto const found = std::ranges::find(dictionary_.classes, name, &Class::name);
  return found == dictionary_.classes.end() ? nullptr : &*found;
}

template <typename Matches>
bool Terms::anyAncestor(Code owner, Matches matches) const {
  auto const* each = findClass(owner);
  // A table whose classes inherit from each other in a circle must not hang us.
  for (std::size_t steps = 0; each != nullptr && steps <= dictionary_.classes.size(); ++steps) {
    if (matches(each->name)) return true;
    each = each->inherits.empty() ? nullptr : findClass(each->inherits);
  }
  return false;
}

Terms::Property const* Terms::findProperty(Code owner, Code property) const {
  Property const* found = nullptr;
  anyAncestor(owner, [&](std::string const& name) {
    auto const place = std::ranges::find_if(
        dictionary_.properties, [&](auto const& each) { return each.ownerClass == name && each.code == property; });
    if (place != dictionary_.properties.end()) found = &*place;
    return found != nullptr;
  });
  return found;
}

bool Terms::hasElements(Code owner, Code element) const {
  auto const* wanted = findClass(element);
  return wanted != nullptr && anyAncestor(owner, [&](std::string const& name) {
           return std::ranges::any_of(dictionary_.elements, [&](auto const& each) {
             return each.ownerClass == name && each.elementClass == wanted->name;
           });
         });
}

bool Terms::isEnumeration(std::string_view name) const {
  return std::ranges::any_of(dictionary_.enumerators, [name](auto const& each) { return each.enumeration == name; });
}

bool Terms::hasEnumerator(std::string_view enumeration, Code code) const {
  return std::ranges::any_of(dictionary_.enumerators,
                             [&](auto const& each) { return each.enumeration == enumeration && each.code == code; });
}

}  // namespace morla::captureone
