#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/Geometry.h"
#include "view/Drawing.h"

namespace morla::platform {

/// The status area's square-length constant (AppKit's NSStatusItem.squareLength).
inline constexpr double kSquareStatusItemLength = -2;

/// The part of a status item that shows an image and can be clicked. Main thread.
class StatusItemButton {
 public:
  virtual ~StatusItemButton() = default;
  virtual void setImage(view::Drawing const& image) = 0;
  virtual void setAction(std::function<void(StatusItemButton&)> action) = 0;
  /// Where the button stands on the screen; nothing while it has no window.
  [[nodiscard]] virtual std::optional<BottomLeftRect> frameOnScreen() const = 0;
};

/// An item in the desktop's status area; gone when destroyed. Main thread.
class StatusItem {
 public:
  virtual ~StatusItem() = default;
  /// None where the system gives the item no button.
  [[nodiscard]] virtual StatusItemButton* button() = 0;
};

class StatusBar {
 public:
  virtual ~StatusBar() = default;
  /// `length` in points, or kSquareStatusItemLength.
  [[nodiscard]] virtual std::unique_ptr<StatusItem> makeStatusItem(double length) = 0;
};

}  // namespace morla::platform
