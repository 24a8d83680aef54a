#pragma once

#include <vector>

#include "platform/linux/ui/XTypes.h"

namespace morla::linux {

enum class WindowKind {
  other,    ///< menus, tooltips and the like: they stand where they were put
  managed,  ///< the frame of a window that the window manager manages
  panel,    ///< one of ours
};

struct StackedWindow {
  XWindowId id = 0;
  WindowKind kind = WindowKind::other;
  int level = 0;  ///< of a panel
};

/// Panels from this level up float above every managed window.
inline constexpr int kFirstFloatingLevel = 3;

/// What must be raised, one after the other, so that the floating panels stand above managed windows and panels that
/// do not float, a higher level above a lower one. Empty when they do already.
[[nodiscard]] std::vector<XWindowId> panelsToRaise(std::vector<StackedWindow> const& bottomToTop);

/// The panels that do not float and stand above `front`: what must be put directly below it, one after the other, now
/// that it came to the front.
[[nodiscard]] std::vector<XWindowId> panelsToSink(std::vector<StackedWindow> const& bottomToTop, XWindowId front);

}  // namespace morla::linux
