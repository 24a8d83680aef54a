#pragma once

#include <string>
#include <string_view>

#include "applescript/Dictionary.h"

namespace morla::captureone {

/// A dictionary as the application's side needs it: by codes.
class Terms {
 public:
  using Class = applescript::Dictionary::Class;
  using Property = applescript::Dictionary::Property;

  explicit Terms(applescript::Dictionary dictionary) : dictionary_(std::move(dictionary)) {}

  [[nodiscard]] Class const* findClass(applescript::Code code) const;
  [[nodiscard]] Class const* findClass(std::string_view name) const;
  /// Of the class itself or of one that it inherits from; null when it has none.
  [[nodiscard]] Property const* findProperty(applescript::Code owner, applescript::Code property) const;
  [[nodiscard]] bool hasElements(applescript::Code owner, applescript::Code element) const;
  [[nodiscard]] bool isEnumeration(std::string_view name) const;
  [[nodiscard]] bool hasEnumerator(std::string_view enumeration, applescript::Code code) const;

  [[nodiscard]] applescript::Dictionary const& dictionary() const { return dictionary_; }

 private:
  /// Applies `matches` to the class's name and those of its ancestors until one is true.
  template <typename Matches>
  bool anyAncestor(applescript::Code owner, Matches matches) const;

  applescript::Dictionary dictionary_;
};

}  // namespace morla::captureone
