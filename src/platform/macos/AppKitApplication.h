#pragma once

#include "platform/Application.h"

namespace morla::macos {

class AppKitApplication final : public platform::Application {
 public:
  void setActivationPolicy(platform::ActivationPolicy policy) override;
  /// AppKit ends the process itself when the application terminates, with status 0; this never returns then.
  int run() override;
  void terminate() override;
  /// Nothing on this system asks for actions by name; the handler is never called.
  void onActionRequest(std::function<platform::ActionOutcome(std::string_view)> handler) override;
};

class MainBundle final : public platform::OwnBundle {
 public:
  [[nodiscard]] std::optional<std::string> identifier() const override;
  [[nodiscard]] std::string shortVersion() const override;
};

}  // namespace morla::macos
