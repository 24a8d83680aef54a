#pragma once

#include "platform/Files.h"

namespace morla::linux {

class StdFiles final : public platform::Files {
 public:
  [[nodiscard]] std::string homeFolder() const override;
  /// Hidden is what begins with a dot.
  [[nodiscard]] std::optional<std::vector<std::string>> visibleEntries(std::string const& folder) const override;
};

}  // namespace morla::linux
