#include "app/MainApp.h"

#include <string>
#include <string_view>

#include "app/StatusImage.h"
#include "base/Task.h"
#include "base/Trace.h"
#include "base/unicode/Unicode.h"
#include "platform/Environment.h"
#include "platform/NotificationNames.h"

namespace morla::app {
namespace {

constexpr std::string_view kButtonWindowX = "buttonWindowX";  ///< number: x of the floating button's frame origin
constexpr std::string_view kButtonWindowY = "buttonWindowY";

}  // namespace

MainApp::MainApp(platform::Environment& environment)
    : platform_(environment.platform()),
      notifications_(environment.notifications()),
      features_(FeatureHooks::shared()),
      focus_(platform_.workspace) {}

int MainApp::main() {
  platform_.application.setActivationPolicy(platform::ActivationPolicy::accessory);
  makeFloatingButton();
  auto& actions = AppMenuActions::shared();
  mirror::FloatingButtonState::shared().initializeDefaults();
  if (features_.makeMenuBarPanel) menuBarPanelController_ = features_.makeMenuBarPanel();
  makeContextMenu();
  makeStatusItem();
  restoreFloatingButtonPosition();
  observeFloatingButton();
  observeApplication();
  actionRequests_ = std::make_unique<ActionRequests>(actions, features_, platform_.application);
  platform_.application.onActionRequest([this](std::string_view name) { return actionRequests_->perform(name); });
  if (features_.airdropFolders) features_.airdropFolders().cleanupAirdropFolders();
  platform_.mainLoop.post(life_.weak([this] { startFeatures(); }));
  return platform_.application.run();
}

void MainApp::makeFloatingButton() {
  floatingButton_ = platform_.panels.makePanel(mirror::FloatingButtonPanel::spec(), panelClass_);
  floatingButton_->setContentSize(mirror::kFloatingButtonSize);
  floatingButton_->setContent(mirror::FloatingButtonView());
}

void MainApp::makeContextMenu() {
  auto quit = std::make_shared<platform::MenuItem>();
  quit->title = "Quitter";
  quit->action = [&application = platform_.application] { application.terminate(); };
  contextMenu_.items = {std::move(quit)};
}

void MainApp::makeStatusItem() {
  statusItem_ = platform_.statusBar.makeStatusItem(platform::kSquareStatusItemLength);
  auto* button = statusItem_->button();
  if (button == nullptr) return;
  button->setImage(statusImage());
  button->setAction([this](platform::StatusItemButton& sender) {
    if (menuBarPanelController_ != nullptr) menuBarPanelController_->togglePanel(sender);
  });
}

void MainApp::restoreFloatingButtonPosition() {
  auto const x = platform_.defaults.number(kButtonWindowX);
  if (!x) return;
  auto const y = platform_.defaults.number(kButtonWindowY);
  if (!y) return;
  floatingButton_->setFrameOrigin({*x, *y});
}

void MainApp::observeFloatingButton() {
  observations_.push_back(floatingButton_->onDidMove([this] {
    auto const origin = floatingButton_->frame().origin;
    platform_.defaults.set({{std::string(kButtonWindowX), origin.x}, {std::string(kButtonWindowY), origin.y}});
  }));
  observations_.push_back(
      platform_.eventMonitors.addLocalMonitor(FloatingButtonMouse::kMask, [this](platform::MouseEvent const& event) {
        if (event.panel != floatingButton_.get()) return platform::MonitorDecision::pass;
        return mouse_.handle(event);
      }));
}

void MainApp::observeApplication() {
  // Delivery is on the main thread, but each reaction has a turn of its own: none runs inside whatever caused it.
  auto const onItsOwnTurn = [this](void (MainApp::*reaction)()) {
    return [this, reaction] { platform_.mainLoop.post(life_.weak([this, reaction] { (this->*reaction)(); })); };
  };
  observations_.push_back(
      platform_.workspace.onActivated([this, react = onItsOwnTurn(&MainApp::handleFrontAppDidChange)] {
        traceFrontApplication();
        react();
      }));
  observations_.push_back(notifications_.addObserver(
      notifications::kWindowModeChanged,
      [react = onItsOwnTurn(&MainApp::handleWindowModeChanged)](Notification const&) { react(); }));
  observations_.push_back(notifications_.addObserver(
      notifications::kHotkeyPressed,
      [react = onItsOwnTurn(&MainApp::handleHotkeyPressed)](Notification const&) { react(); }));
}

void MainApp::startFeatures() {
  for (auto const& hotkeys : {features_.hotkeys, features_.captureOneFolderHotkeys, features_.airdropHotkeys}) {
    if (hotkeys) hotkeys().registerHotkey();
  }
  for (auto const& scripts : {features_.captureOneFolderScripts, features_.airdropScripts}) {
    if (scripts) scripts().startListening();
  }
  // On a further turn, so that the camera watch starts after this sequence has finished.
  platform_.mainLoop.post([] { detach(camerawatch::FormatMonitor::shared().checkAndStartIfNeeded()); });
  traceFrontApplication();
  handleFrontAppDidChange();
  if (auto* trace = Trace::active()) trace->ready();
}

void MainApp::handleFrontAppDidChange() {
  auto const front = platform_.workspace.frontmostApplication();
  auto const frontName = front ? front->localizedName : std::nullopt;
  bool const isCaptureOne = camerawatch::isCaptureOneName(frontName);
  bool const isOurAppFront = (front ? front->bundleIdentifier : std::nullopt) == platform_.ownBundle.identifier();

  if (isOurAppFront) {
    bool const isCreatingFolder = features_.createFolderWindow && features_.createFolderWindow().isVisible();
    if (!isCreatingFolder) focus_.activateIfRunning();
  }
  bool const isWindowMode = mirror::FloatingButtonState::shared().windowModeEnabled();
  if (isWindowMode && (isCaptureOne || isOurAppFront)) {
    floatingButton_->orderFrontRegardless();
  } else {
    floatingButton_->orderOut();
  }
  if (isWindowMode && features_.mirrorWindow) {
    features_.mirrorWindow().handleFrontAppChange(unicode::lowercased(frontName.value_or("")), isOurAppFront);
  }
}

void MainApp::handleWindowModeChanged() {
  if (!mirror::FloatingButtonState::shared().windowModeEnabled()) {
    if (features_.mirrorWindow) {
      auto& mirrorWindow = features_.mirrorWindow();
      mirrorWindow.setUserWantsWindowVisible(false);
      auto* window = mirrorWindow.secondaryWindow();
      if (window != nullptr && window->isVisible()) window->orderOut();
    }
    notifications_.post(notifications::kWindowDidHide);
  }
  handleFrontAppDidChange();
}

void MainApp::handleHotkeyPressed() {
  if (!mirror::FloatingButtonState::shared().windowModeEnabled()) return;
  toggleMirrorWindow();
  focus_.activateIfRunning();
}

void MainApp::toggleMirrorWindow() {
  if (!features_.mirrorWindow || !features_.mirrorWindow().toggleWindow(*floatingButton_)) return;
  if (auto* window = features_.mirrorWindow().secondaryWindow()) window->orderFrontRegardless();
}

void MainApp::traceFrontApplication() {
  auto* trace = Trace::active();
  if (trace == nullptr) return;
  auto const front = platform_.workspace.frontmostApplication();
  trace->line(
      {{"front", front ? Json(front->localizedName) : Json()}, {"id", front ? Json(front->bundleIdentifier) : Json()}});
}

BottomLeftPoint MainApp::pointerLocation() const {
  return platform_.pointer.location();
}

void MainApp::clicked() {
  toggleMirrorWindow();
}

void MainApp::released() {
  focus_.activateIfRunning();
}

void MainApp::contextMenuWanted(BottomLeftPoint inPanel) {
  auto const origin = floatingButton_->frame().origin;
  platform_.menus.popUp(contextMenu_, {origin.x + inPanel.x, origin.y + inPanel.y});
}

}  // namespace morla::app
