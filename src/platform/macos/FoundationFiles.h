#pragma once

#include "platform/Files.h"

namespace morla::macos {

class FoundationFiles final : public platform::Files {
 public:
  [[nodiscard]] std::string homeFolder() const override;
  [[nodiscard]] std::optional<std::vector<std::string>> visibleEntries(std::string const& folder) const override;
};

}  // namespace morla::macos
