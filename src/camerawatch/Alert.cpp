#include "camerawatch/Alert.h"

#include <string>
#include <utility>

#include "view/PanelSpec.h"

namespace morla::camerawatch {
namespace {

constexpr BottomLeftRect kContentRect{{0, 0}, {300, 80}};

/// The class of the alerts' panels: a borderless panel without anything to type into has no use for the keyboard.
class AlertPanel : public view::PanelBehaviour {
 public:
  [[nodiscard]] bool canBecomeKey() const override { return false; }
  [[nodiscard]] bool canBecomeMain() const override { return false; }
};

view::PanelSpec alertPanelSpec(std::string_view positionKey) {
  view::PanelSpec spec;
  spec.name = positionKey;
  spec.contentRect = kContentRect;
  spec.styleMask = view::kNonactivatingPanel;
  spec.level = view::Level::floating;
  spec.collectionBehaviour = view::kCanJoinAllSpaces | view::kFullScreenAuxiliary;
  spec.isOpaque = false;
  spec.isMovableByBackground = true;
  // It warns the user of Capture One, which is when this program is not active.
  spec.hidesOnDeactivate = false;
  return spec;
}

}  // namespace

AlertWindow createAlertWindow(platform::PanelHost& panels, platform::UserDefaults& defaults,
                              std::string_view positionKey) {
  static AlertPanel panelClass;
  AlertWindow window{panels.makePanel(alertPanelSpec(positionKey), panelClass), {}};
  auto* panel = window.panel.get();
  auto const keyX = std::string(positionKey) + "X";
  auto const keyY = std::string(positionKey) + "Y";
  auto const x = defaults.number(keyX);
  auto const y = defaults.number(keyY);
  if (x && y) {
    panel->setFrameOrigin({*x, *y});
  } else {
    panel->centre();
  }
  // A move is announced on a later turn: the one above is none of the user's, and the middle is not to be stored.
  window.moves = panel->onDidMove([panel, &defaults, keyX, keyY, last = panel->frame().origin]() mutable {
    auto const origin = panel->frame().origin;
    if (origin == std::exchange(last, origin)) return;
    defaults.set({{keyX, origin.x}, {keyY, origin.y}});
  });
  return window;
}

void Alert::show(view::Node banner) {
  if (isShowing_.get()) {
    if (window_) window_->panel->setContent(std::move(banner));
    return;
  }
  isShowing_.set(true);
  if (!window_) window_ = createAlertWindow(roles_.panels, roles_.defaults, positionKey_);
  window_->panel->setContent(std::move(banner));
  window_->panel->orderFrontRegardless();
}

void Alert::dismiss() {
  isShowing_.set(false);
  if (window_) window_->panel->orderOut();
}

}  // namespace morla::camerawatch
