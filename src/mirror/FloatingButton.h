#pragma once

#include "base/Geometry.h"
#include "view/PanelSpec.h"
#include "view/View.h"

namespace morla::mirror {

/// The floating button's side, in points.
inline constexpr Size kFloatingButtonSize{40, 40};

/// The class of the floating button's panel: it never takes the focus.
class FloatingButtonPanel : public view::PanelBehaviour {
 public:
  [[nodiscard]] static view::PanelSpec spec();
  [[nodiscard]] bool canBecomeKey() const override { return false; }
  [[nodiscard]] bool canBecomeMain() const override { return false; }
};

/// A small screen on its foot, white.
[[nodiscard]] view::Node ScreenIconView();

/// What the floating button shows: the screen icon on a black disc.
[[nodiscard]] view::Node FloatingButtonView();

}  // namespace morla::mirror
