#pragma once

#include "base/NotificationCenter.h"

/// Every notification that the subsystems exchange, and nothing else. No object is attached unless stated.
namespace morla::notifications {

/// A write of `FloatingButtonState::windowModeEnabled`, also of an equal value.
inline constexpr NotificationName kWindowModeChanged{"windowModeChanged"};
/// A write of `FloatingButtonState::checkModeEnabled`, also of an equal value.
inline constexpr NotificationName kCheckModeChanged{"checkModeChanged"};
/// The chord that toggles the mirror window.
inline constexpr NotificationName kHotkeyPressed{"hotkeyPressed"};
/// The chord that exports the selected images to AirDrop.
inline constexpr NotificationName kAirdropHotkeyPressed{"airdropHotkeyPressed"};
/// The chord that creates a capture folder.
inline constexpr NotificationName kCaptureOneFolderHotkeyPressed{"captureOneFolderHotkeyPressed"};
/// The mirror window went, or window mode was switched off.
inline constexpr NotificationName kWindowDidHide{"windowDidHide"};

}  // namespace morla::notifications
