#include "app/ShortcutHooks.h"

#include "shortcuts/ChordHotkeyManager.h"

namespace morla::app {
namespace {

/// The shared `Manager`, made when start-up comes to it.
template <typename Manager>
class SharedHotkeys final : public HotkeyRegistration {
 public:
  void registerHotkey() override { Manager::shared().registerHotkey(); }
};

template <typename Manager>
Feature<HotkeyRegistration> hotkeysOf() {
  return [hotkeys = std::make_shared<SharedHotkeys<Manager>>()]() -> HotkeyRegistration& { return *hotkeys; };
}

}  // namespace

void installShortcuts(FeatureHooks& hooks) {
  hooks.hotkeys = hotkeysOf<shortcuts::HotkeyManager>();
  hooks.captureOneFolderHotkeys = hotkeysOf<shortcuts::CaptureOneFolderHotkeyManager>();
  hooks.airdropHotkeys = hotkeysOf<shortcuts::AirdropHotkeyManager>();
}

}  // namespace morla::app
