#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "base/MainLoop.h"
#include "platform/KeyEvents.h"
#include "platform/linux/input/KeyboardHook.h"

namespace morla::linux {

/// All taps share one hook: to the server a second one would be another program that wants the same keys. It is made
/// with the first tap. Main thread.
class X11EventTaps final : public platform::EventTaps, private KeyboardHook::Decider {
 public:
  /// `isPermitted` is asked whenever a tap is made.
  X11EventTaps(MainLoop& loop, std::function<bool()> isPermitted) : loop_(loop), isPermitted_(std::move(isPermitted)) {}
  ~X11EventTaps() override;

  [[nodiscard]] std::unique_ptr<platform::EventTap> makeTap(platform::EventTap::Callback& callback,
                                                            platform::WantedKeys wanted) override;

 private:
  class Tap;

  /// False when the keys of the enabled taps are not to be had.
  bool refresh();
  [[nodiscard]] bool isLive(Tap const* tap) const;
  platform::TapDecision decide(platform::KeyEvent const& event) override;
  void decisionWasLate() override;
  void keymapDidChange(std::size_t refusedKeys) override;
  void connectionWasLost() override;

  MainLoop& loop_;
  std::function<bool()> isPermitted_;
  std::vector<Tap*> taps_;  ///< in the order of making
  std::unique_ptr<KeyboardHook> hook_;
};

}  // namespace morla::linux
