#include "platform/linux/input/X11EventTaps.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/Log.h"
#include "base/MainThread.h"
#include "platform/linux/input/KeyCodes.h"

namespace morla::linux {

using platform::TapDecision;

class X11EventTaps::Tap final : public platform::EventTap {
 public:
  Tap(X11EventTaps& taps, Callback& owner, platform::WantedKeys keys)
      : callback(owner), wanted(std::move(keys)), taps_(taps) {
    taps_.taps_.push_back(this);
  }
  ~Tap() override {
    std::erase(taps_.taps_, this);
    // Fewer keys than before are never refused.
    (void)taps_.refresh();
  }
  void enable() override {
    assertIsMainThread();
    isEnabled = true;
    if (!taps_.refresh()) {
      isEnabled = false;
      log("Keyboard", "another program has taken keys of a shortcut");
    }
  }

  Callback& callback;
  platform::WantedKeys wanted;
  bool isEnabled = true;

 private:
  X11EventTaps& taps_;
};

X11EventTaps::~X11EventTaps() = default;

std::unique_ptr<platform::EventTap> X11EventTaps::makeTap(platform::EventTap::Callback& callback,
                                                          platform::WantedKeys wanted) {
  assertIsMainThread();
  if (!isPermitted_()) return nullptr;
  if (hook_ == nullptr) hook_ = KeyboardHook::open(loop_, *this);
  if (hook_ == nullptr) return nullptr;
  auto tap = std::make_unique<Tap>(*this, callback, std::move(wanted));
  if (!refresh()) return nullptr;
  return tap;
}

bool X11EventTaps::refresh() {
  if (hook_ == nullptr) return false;
  std::vector<platform::WantedKeys> wanted;
  for (auto const* tap : taps_) {
    if (tap->isEnabled) wanted.push_back(tap->wanted);
  }
  return hook_->setWanted(std::move(wanted));
}

bool X11EventTaps::isLive(Tap const* tap) const {
  return std::ranges::find(taps_, tap) != taps_.end();
}

TapDecision X11EventTaps::decide(platform::KeyEvent const& event) {
  auto const snapshot = taps_;
  for (auto tap = snapshot.rbegin(); tap != snapshot.rend(); ++tap) {
    if (!isLive(*tap) || !(*tap)->isEnabled) continue;
    if ((*tap)->callback.handle(event) == TapDecision::swallow) return TapDecision::swallow;
  }
  return TapDecision::pass;
}

void X11EventTaps::decisionWasLate() {
  // Which keys are down by now is not known; to the taps it is as if a modifier had changed.
  (void)decide({platform::KeyEventType::flagsChanged, kNoMacKey, {}, {}, false});
  auto const snapshot = taps_;
  for (auto* tap : snapshot) tap->isEnabled = false;
  for (auto* tap : snapshot) {
    if (isLive(tap)) tap->callback.tapWasDisabled(*tap);
  }
}

void X11EventTaps::keymapDidChange(std::size_t refusedKeys) {
  if (refusedKeys > 0) log("Keyboard", "another program has taken keys of a shortcut");
}

void X11EventTaps::connectionWasLost() {
  log("Keyboard", "the connection to the X server is lost: no more shortcuts");
}

}  // namespace morla::linux
