#include "platform/linux/ui/StatusStandIn.h"

#include <utility>

#include "view/PanelSpec.h"
#include "view/View.h"

namespace morla::linux {
namespace {

/// As high as the bars of most desktops, and a little off the corner, where some desktops have hot spots.
constexpr double kHeight = 24;
constexpr double kMarginAtTop = 4;
constexpr double kMarginAtRight = 8;

view::PanelSpec specOfItem() {
  view::PanelSpec spec;
  spec.name = "StatusItem";
  spec.isOpaque = false;
  spec.hasShadow = false;
  return spec;
}

}  // namespace

StatusStandIn::StatusStandIn(PanelServices const& services, double width, std::function<void()> clicked)
    : services_(services),
      width_(width > 0 ? width : kHeight),
      window_(specOfItem(), behaviour_, services.loop, services.client, services.compositor),
      screensDidChange_(services.screens.onDidChange([this] { place(); })) {
  window_.onRelease([this, clicked = std::move(clicked)](QPointF pointer) {
    bool const isInside = window_.geometry().contains(pointer.toPoint());
    if (isInside) clicked();
  });
  place();
  window_.showOnTop();
  services_.stack.didShow(window_.id(), static_cast<int>(view::Level::status));
}

StatusStandIn::~StatusStandIn() {
  services_.stack.didHide(window_.id());
}

void StatusStandIn::setImage(view::Drawing const& image) {
  window_.setContent(view::node(view::Canvas{image}));
}

void StatusStandIn::place() {
  auto const& screens = services_.screens;
  GlobalRect const first = screens.areas().empty() ? GlobalRect{} : screens.areas().front().inPoints;
  frame_ = {{first.origin.x + first.size.width - width_ - kMarginAtRight, first.origin.y + kMarginAtTop},
            {width_, kHeight}};
  window_.setGeometry(screens.toQt(frame_));
}

}  // namespace morla::linux
