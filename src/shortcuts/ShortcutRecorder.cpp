#include "shortcuts/ShortcutRecorder.h"

#include <array>
#include <bit>
#include <cstddef>
#include <utility>

#include "shortcuts/KeyNames.h"

namespace morla::shortcuts {
namespace {

/// More keys than these, modifiers included, no hand can hold quickly.
constexpr std::size_t kMostKeys = 3;
constexpr char kTooManyKeys[] = "Maximum 3 touches";
constexpr char kNoChord[] = "Cliquer pour définir";

/// In the order in which they are shown.
constexpr std::array<std::pair<ModifierMask, std::string_view>, 4> kModifierSigns{{
    {kCommand, "⌘"},
    {kShift, "⇧"},
    {kOption, "⌥"},
    {kControl, "⌃"},
}};

std::size_t countModifiers(ModifierMask mask) {
  return static_cast<std::size_t>(std::popcount(static_cast<std::uint64_t>(mask)));
}

}  // namespace

ShortcutRecorder::ShortcutRecorder(Roles roles, ChordSettings const& settings, TraceNames const& names)
    : roles_(roles),
      settings_(settings),
      isRecording_(names.isRecording),
      currentChars_(names.currentChars),
      currentModifiers_(names.currentModifiers),
      errorMessage_(names.errorMessage) {}

void ShortcutRecorder::startRecording() {
  stopRecording();
  isRecording_.set(true);
  errorMessage_.set("");
  recordingChars_.clear();
  recordingModifiers_ = 0;
  maxCharsReached_.clear();
  roles_.hotkeys.unregisterHotkey();

  auto handleWeakly = life_.weak([this](platform::KeyEvent const& event) { handle(event); });
  // The key belongs to the chord alone: nothing in the window must act on it.
  auto consume = [handleWeakly](platform::KeyEvent const& event) mutable {
    handleWeakly(event);
    return platform::MonitorDecision::consume;
  };
  localMonitorDown_ = roles_.monitors.addLocalMonitor(platform::kKeyDown, consume);
  localMonitorUp_ = roles_.monitors.addLocalMonitor(platform::kKeyUp, consume);
  globalMonitorDown_ = roles_.monitors.addGlobalMonitor(platform::kKeyDown, handleWeakly);
  globalMonitorUp_ = roles_.monitors.addGlobalMonitor(platform::kKeyUp, handleWeakly);
}

void ShortcutRecorder::stopRecording() {
  for (auto* monitor : {&localMonitorDown_, &localMonitorUp_, &globalMonitorDown_, &globalMonitorUp_}) monitor->end();
  isRecording_.set(false);
  recordingChars_.clear();
  if (currentChars_.get().empty()) return;
  store(settings_, chord(), roles_.defaults);
  roles_.hotkeys.registerHotkey();
}

void ShortcutRecorder::clearShortcut() {
  currentChars_.set({});
  currentModifiers_.set(0);
  errorMessage_.set("");
  stopRecording();
}

void ShortcutRecorder::loadFromDefaults() {
  auto const stored = load(settings_, roles_.defaults);
  currentChars_.set(splitKeys(stored.characters));
  currentModifiers_.set(stored.modifiers);
  errorMessage_.set("");
}

void ShortcutRecorder::saveToDefaults() {
  store(settings_, chord(), roles_.defaults);
  if (currentChars_.get().empty()) {
    roles_.hotkeys.unregisterHotkey();
  } else {
    roles_.hotkeys.registerHotkey();
  }
}

std::string ShortcutRecorder::displayText() const {
  auto const modifiers = currentModifiers_.get();
  if (currentChars_.get().empty() && modifiers == 0) return kNoChord;
  std::string text;
  for (auto const& [modifier, sign] : kModifierSigns) {
    if ((modifiers & modifier) != 0) text += sign;
  }
  return text + joinedKeys(currentChars_.get());
}

void ShortcutRecorder::handle(platform::KeyEvent const& event) {
  if (!isRecording_.get()) return;
  switch (event.type) {
    case platform::KeyEventType::down:
      handleKeyDown(event);
      break;
    case platform::KeyEventType::up:
      handleKeyUp(event);
      break;
    case platform::KeyEventType::flagsChanged:
      break;
  }
}

void ShortcutRecorder::handleKeyDown(platform::KeyEvent const& event) {
  auto const modifiers = modifierMask(event.modifierFlags);
  bool const isAlone = modifiers == 0 && recordingChars_.empty();
  if (isAlone && (event.keyCode == kDeleteKey || event.keyCode == kForwardDeleteKey)) {
    later([this] { clearShortcut(); });
    return;
  }
  if (isAlone && event.keyCode == kEscapeKey) {
    later([this] {
      loadFromDefaults();
      stopRecording();
    });
    return;
  }
  auto const name = charFromEvent(event, event.keyCode);
  if (name.empty()) return;
  recordingChars_.insert(name);
  recordingModifiers_ = modifiers;
  if (recordingChars_.size() + countModifiers(modifiers) > kMostKeys) {
    later([this] { errorMessage_.set(kTooManyKeys); });
    recordingChars_.erase(name);
    return;
  }
  if (recordingChars_.size() > maxCharsReached_.size()) maxCharsReached_ = recordingChars_;
  later([this] { errorMessage_.set(""); });
}

void ShortcutRecorder::handleKeyUp(platform::KeyEvent const& event) {
  auto const name = charFromEvent(event, event.keyCode);
  if (!name.empty()) recordingChars_.erase(name);
  if (recordingChars_.empty() && !maxCharsReached_.empty()) {
    later([this] { takeChord(); });
  }
}

void ShortcutRecorder::takeChord() {
  // A further key may have come up before this turn, and the chord is taken already.
  if (maxCharsReached_.empty()) return;
  currentChars_.set(std::exchange(maxCharsReached_, {}));
  currentModifiers_.set(recordingModifiers_);
  stopRecording();
}

StoredChord ShortcutRecorder::chord() const {
  return {joinedKeys(currentChars_.get()), currentModifiers_.get()};
}

}  // namespace morla::shortcuts
