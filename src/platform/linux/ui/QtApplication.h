#pragma once

#include "platform/Application.h"
#include "platform/linux/ui/QtMainLoop.h"

namespace morla::linux {

/// Needs a QApplication, and outlives no run of it. Main thread.
class QtApplication : public platform::Application {
 public:
  explicit QtApplication(QtMainLoop& loop);

  /// X knows no such policy: a program whose windows are all override-redirect is in no task list.
  void setActivationPolicy(platform::ActivationPolicy policy) override;
  int run() override;
  void terminate() override;
  void onActionRequest(std::function<platform::ActionOutcome(std::string_view action)> handler) override;

  /// For whoever brings requests from outside; "unavailable" until the program has given its handler.
  [[nodiscard]] platform::ActionOutcome handleActionRequest(std::string_view action);

 private:
  QtMainLoop& loop_;
  std::function<platform::ActionOutcome(std::string_view)> handler_;
  bool isTerminating_ = false;
};

}  // namespace morla::linux
