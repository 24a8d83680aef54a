#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Platform.h"

/// What each back end defines; which one it is, is decided when the program is linked.
namespace morla::platform {

/// Owns every role. Never destroyed in the product.
class BackEnd {
 public:
  virtual ~BackEnd() = default;
  [[nodiscard]] virtual Platform platform() = 0;
};

struct BackEndOrFailure {
  std::unique_ptr<BackEnd> backEnd;  ///< none: `failure` says why, in one line
  std::string failure;
};

/// Commands of `morla` that the back end answers without starting the program ("defaults", "do"): the exit status, or
/// nothing when `arguments` (without the program's name) are no such command.
[[nodiscard]] std::optional<int> runBackEndCommand(std::vector<std::string> const& arguments);

/// The lines that `morla --help` shows for those commands; empty when there are none.
[[nodiscard]] std::string backEndCommandHelp();

/// Connects to the desktop.
[[nodiscard]] BackEndOrFailure openBackEnd(int& argc, char** argv);

}  // namespace morla::platform
