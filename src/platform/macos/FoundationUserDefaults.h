#pragma once

#include "platform/UserDefaults.h"

namespace morla::macos {

/// The standard user defaults. Read through `objectForKey:` alone: the getters by type would turn text into numbers and
/// numbers into booleans.
class FoundationUserDefaults final : public platform::UserDefaults {
 public:
  [[nodiscard]] std::optional<platform::DefaultsValue> value(std::string_view key) const override;

 private:
  void store(std::vector<platform::DefaultsEntry> const& entries) override;
};

}  // namespace morla::macos
