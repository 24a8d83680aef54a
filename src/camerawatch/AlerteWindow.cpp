#include "camerawatch/AlerteWindow.h"

#include <utility>

#include "platform/Environment.h"

namespace morla::camerawatch {
namespace {

/// The width is the window's own, so that neither a longer text nor another page makes it jump.
constexpr double kWidth = 300;

view::PanelSpec settingsPanelSpec(Size contentSize) {
  view::PanelSpec spec;
  spec.name = "AlertePanel";
  spec.title = "Alertes";
  spec.contentRect = {{0, 0}, contentSize};
  spec.styleMask = view::kTitled | view::kClosable | view::kNonactivatingPanel | view::kFullSizeContentView;
  spec.hasTransparentTitleBar = true;
  spec.isMovableByBackground = true;
  spec.level = view::Level::floating;
  spec.collectionBehaviour = view::kCanJoinAllSpaces | view::kFullScreenAuxiliary;
  spec.hidesOnDeactivate = false;
  return spec;
}

}  // namespace

void AlertePanel::sendEvent(view::PanelEvent event, std::function<void()> const& passOn) {
  passOn();
  if (event == view::PanelEvent::leftMouseUp) {
    loop_.post([focus = focus_] { focus.activateIfRunning(); });
  }
}

AlerteWindowController::AlerteWindowController(Roles roles, FormatMonitor& monitor)
    : loop_(roles.loop), panels_(roles.panels), monitor_(monitor), panelClass_(roles.loop, roles.workspace) {}

AlerteWindowController& AlerteWindowController::shared() {
  return platform::Environment::active().shared<AlerteWindowController>();
}

std::unique_ptr<AlerteWindowController> AlerteWindowController::make(platform::Environment& environment) {
  auto& p = environment.platform();
  return std::make_unique<AlerteWindowController>(Roles{p.mainLoop, p.workspace, p.panels}, FormatMonitor::shared());
}

void AlerteWindowController::showSettings() {
  if (window_ != nullptr && window_->isVisible()) {
    window_->orderFrontRegardless();
    return;
  }
  live_.reset();
  view_.emplace(monitor_);
  auto described = content();
  window_ = panels_.makePanel(settingsPanelSpec(panels_.fittingSize(described)), panelClass_);
  window_->setContent(described);
  window_->centre();
  closing_ = window_->onWillClose([this] { windowWillClose(); });
  live_.emplace(
      loop_, std::move(described), [this] { return content(); }, [this](view::Node node) { show(std::move(node)); });
  view_->isReadBy(*live_);
  window_->orderFrontRegardless();
}

view::Node AlerteWindowController::content() {
  // The close button stands over the content's top edge.
  return view::node(view::VStack{{view_->describe()}, 0})
      .padded({.top = view::kTitleBarHeight})
      .framed({.width = kWidth});
}

/// The window is as high as its content; its top edge and its middle stay where they are.
void AlerteWindowController::show(view::Node content) {
  auto const size = panels_.fittingSize(content);
  auto const frame = window_->frame();
  window_->setContent(std::move(content));
  if (size == frame.size) return;
  window_->setFrame(
      {{frame.origin.x + (frame.size.width - size.width) / 2, frame.origin.y + frame.size.height - size.height}, size});
}

/// Nothing but the drawing ends: the window stays, hidden, until another one takes its place.
void AlerteWindowController::windowWillClose() {
  live_.reset();
}

}  // namespace morla::camerawatch
