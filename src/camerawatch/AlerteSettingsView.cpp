#include "camerawatch/AlerteSettingsView.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "camerawatch/AlerteStatus.h"

namespace morla::camerawatch {
namespace {

using namespace view;

constexpr double kMinimumWidth = 280;
constexpr Edges kMargins{.top = 6, .leading = 16, .bottom = 16, .trailing = 16};
/// So that a window does not jump from one way to the permission to the next.
constexpr double kPermissionHeight = 176;
/// The symbols' column, and where the titles and what stands under them begin.
constexpr double kSymbolWidth = 20;
constexpr double kSymbolGap = 10;
constexpr double kTitleX = kSymbolWidth + kSymbolGap;
constexpr double kPickerWidth = 132;

constexpr Paint kSecondary{SystemColour::secondary};

Node page(std::vector<Node> children, double spacing, HorizontalAlignment alignment) {
  return node(VStack{std::move(children), spacing, alignment})
      .padded(kMargins)
      .framed({.minWidth = kMinimumWidth, .fillsWidth = true});
}

// The way to the permission.

Node permissionPage(std::vector<Node> children) {
  children.insert(children.begin(), node(Spacer{}));
  children.push_back(node(Spacer{}));
  auto described = page(std::move(children), 10, HorizontalAlignment::centre);
  described.frame.minHeight = kPermissionHeight;
  described.frame.fillsHeight = true;
  return described;
}

Node permissionPage(std::string symbol, std::string title, std::string explanation, std::vector<Node> buttons) {
  return permissionPage({node(Symbol{std::move(symbol), {28}, kSecondary}),
                         node(Text{std::move(title), {13, Weight::semibold}, {}}),
                         node(Text{std::move(explanation), {11}, kSecondary, HorizontalAlignment::centre}),
                         node(HStack{std::move(buttons)}).padded({.top = 4})});
}

Node checkAgainButton(FormatMonitor& monitor) {
  return node(Button{"Réessayer", ButtonStyle::bordered, [&monitor] { detach(monitor.checkPermissionState()); }});
}

// The rows of a watch that may work.

Node statusRow(FormatMonitor const& monitor) {
  std::vector<Node> children{node(Disc{8, {statusColor(monitor)}}), node(Text{statusText(monitor), {10}, kSecondary}),
                             node(Spacer{})};
  if (auto const& name = monitor.cameraName().get(); name && monitor.isCameraConnected().get()) {
    children.push_back(
        node(HStack{{node(Symbol{"camera.fill", {8}, kSecondary}), node(Text{*name, {9}, kSecondary})}, 4})
            .keyed("camera"));
  }
  return node(HStack{std::move(children), 6}).framed({.fillsWidth = true});
}

Node switchRow(std::string symbol, std::string title, bool isOn, Action<bool> turn) {
  auto const label = title;
  return node(HStack{{node(Symbol{std::move(symbol), {13}, kSecondary}).framed({.width = kSymbolWidth}),
                      node(Text{std::move(title), {13}, {}}), node(Spacer{}),
                      node(Toggle{isOn, std::move(turn)}).labelled(label)},
                     kSymbolGap})
      .framed({.minHeight = 24, .fillsWidth = true});
}

/// The expected value, to be chosen from what the camera offers. One that it does not offer is shown all the same, as
/// what cannot be chosen.
Node valuePicker(std::string const& expected, std::vector<std::string> const& available,
                 std::function<void(std::string)> expect) {
  Picker picker;
  picker.options = {"—"};
  picker.options.insert(picker.options.end(), available.begin(), available.end());
  if (expected.empty()) {
    picker.selection = 0;
  } else if (auto const found = std::ranges::find(available, expected); found != available.end()) {
    picker.selection = 1 + static_cast<std::size_t>(found - available.begin());
  } else {
    picker.unlisted = expected;
  }
  picker.action = [available, expect = std::move(expect)](std::size_t index) {
    if (index <= available.size()) expect(index == 0 ? "" : available[index - 1]);
  };
  return node(std::move(picker)).padded({.leading = kTitleX}).framed({.width = kTitleX + kPickerWidth});
}

/// One kind of alert with an expected value.
struct ValueRow {
  std::string title;
  std::string symbol;
  std::string pickerLabel;
  Published<bool> const& alertEnabled;
  void (FormatMonitor::*setAlertEnabled)(bool);
  Published<std::string> const& expectedValue;
  void (FormatMonitor::*setExpectedValue)(std::string);
  Published<std::vector<std::string>> const& available;

  [[nodiscard]] Node describe(FormatMonitor& monitor) const {
    bool const isOn = alertEnabled.get();
    auto picker =
        valuePicker(expectedValue.get(), available.get(),
                    [&monitor, set = setExpectedValue](std::string value) { (monitor.*set)(std::move(value)); });
    return node(VStack{
        {switchRow(symbol, title, isOn, [&monitor, set = setAlertEnabled](bool value) { (monitor.*set)(value); }),
         std::move(picker).labelled(pickerLabel).enabled(isOn)},
        2,
        HorizontalAlignment::leading});
  }
};

Node readyPage(FormatMonitor& monitor) {
  ValueRow const iso{"ISO",
                     "camera.aperture",
                     "ISO attendu",
                     monitor.isoAlertEnabled(),
                     &FormatMonitor::setIsoAlertEnabled,
                     monitor.isoExpectedValue(),
                     &FormatMonitor::setIsoExpectedValue,
                     monitor.availableISOs()};
  ValueRow const aperture{"Ouverture",
                          "f.cursive.circle",
                          "Ouverture attendue",
                          monitor.apertureAlertEnabled(),
                          &FormatMonitor::setApertureAlertEnabled,
                          monitor.apertureExpectedValue(),
                          &FormatMonitor::setApertureExpectedValue,
                          monitor.availableApertures()};
  ValueRow const shutter{"Vitesse",
                         "timer",
                         "Vitesse attendue",
                         monitor.shutterAlertEnabled(),
                         &FormatMonitor::setShutterAlertEnabled,
                         monitor.shutterExpectedValue(),
                         &FormatMonitor::setShutterExpectedValue,
                         monitor.availableShutters()};
  return page({statusRow(monitor), node(Divider{}),
               switchRow("doc.fill", "Format", monitor.isEnabled().get(),
                         [&monitor](bool value) { monitor.setIsEnabled(value); }),
               iso.describe(monitor), aperture.describe(monitor), shutter.describe(monitor)},
              10, HorizontalAlignment::leading);
}

}  // namespace

Node AlerteSettingsView::describe() {
  switch (monitor_.permissionState().get()) {
    case PermissionState::checking:
      return permissionPage({node(Spinner{12}), node(Text{"Vérification...", {11}, kSecondary})});
    case PermissionState::captureOneMissing:
      return permissionPage("questionmark.app", "Capture One introuvable", "Lancez Capture One puis réessayez",
                            {checkAgainButton(monitor_)});
    case PermissionState::needsPermission:
      return permissionRequest();
    case PermissionState::permissionDenied:
      return permissionPage("lock.circle.fill", "Permission refusée",
                            "Réglages Système → Confidentialité\n→ Automatisation → MORLA",
                            {node(Button{"Réglages", ButtonStyle::prominent,
                                         [&monitor = monitor_] { monitor.openAutomationSettings(); }}),
                             checkAgainButton(monitor_)});
    case PermissionState::ready:
      return readyPage(monitor_);
  }
  return {};
}

Node AlerteSettingsView::permissionRequest() {
  auto button = node(Button{"Autoriser", ButtonStyle::prominent, life_.weak([this] { detach(requestAndStart()); })});
  return permissionPage("lock.circle", "Autorisation requise", "Autoriser MORLA à communiquer\navec Capture One",
                        {std::move(button).enabled(!isRequesting_.get())});
}

Task<> AlerteSettingsView::requestAndStart() {
  // The window may be closed while the system asks; what was granted counts all the same.
  auto const alive = life_.reference();
  auto& monitor = monitor_;
  isRequesting_.set(true);
  bool const isGranted = co_await monitor.requestPermission();
  if (isGranted) monitor.startMonitoring();
  if (alive) isRequesting_.set(false);
}

void AlerteSettingsView::isReadBy(LiveView& live) const {
  live.reads(isRequesting_);
  live.reads(monitor_.permissionState());
  for (auto const* flag :
       {&monitor_.isEnabled(), &monitor_.isoAlertEnabled(), &monitor_.apertureAlertEnabled(),
        &monitor_.shutterAlertEnabled(), &monitor_.isAlertShowing(), &monitor_.isIsoAlertShowing(),
        &monitor_.isApertureAlertShowing(), &monitor_.isShutterAlertShowing(), &monitor_.isCameraConnected()}) {
    live.reads(*flag);
  }
  for (auto const* text :
       {&monitor_.isoExpectedValue(), &monitor_.apertureExpectedValue(), &monitor_.shutterExpectedValue()}) {
    live.reads(*text);
  }
  for (auto const* list : {&monitor_.availableISOs(), &monitor_.availableApertures(), &monitor_.availableShutters()}) {
    live.reads(*list);
  }
  live.reads(monitor_.lastDetectedFormat());
  live.reads(monitor_.cameraName());
}

}  // namespace morla::camerawatch
