#include <gtest/gtest.h>

#include "CameraWatchWorld.h"

namespace morla::camerawatch {
namespace {

using Strings = std::vector<std::string>;

/// One of the three kinds with an expected value, as the tests below reach it.
struct ValueKindRow {
  std::string label;
  std::string panel;
  Published<bool> const& (FormatMonitor::*isShowing)() const;
  Published<bool> const& (FormatMonitor::*isOn)() const;
  void (FormatMonitor::*setOn)(bool);
  Published<std::string> const& (FormatMonitor::*expected)() const;
  void (FormatMonitor::*setExpected)(std::string);
  std::string enabledKey;
  std::size_t field;  ///< of the reply, from 0
  std::string firstLine;
  std::string secondLine;

  /// A reply in which only this kind's field is not what a test with default values expects.
  [[nodiscard]] std::string replyWith(std::string const& value) const {
    std::vector<std::string> fields{"RAW", "i", "a", "s"};
    fields[field] = value;
    return fields[0] + "||" + fields[1] + "||" + fields[2] + "||" + fields[3];
  }
};

std::vector<ValueKindRow> const& valueKinds() {
  using M = FormatMonitor;
  static std::vector<ValueKindRow> const kRows{
      {"ISO", "isoAlert", &M::isIsoAlertShowing, &M::isoAlertEnabled, &M::setIsoAlertEnabled, &M::isoExpectedValue,
       &M::setIsoExpectedValue, "isoAlertEnabled", 1, "L'ISO n'est pas : ", "ISO détecté : "},
      {"aperture", "apertureAlert", &M::isApertureAlertShowing, &M::apertureAlertEnabled, &M::setApertureAlertEnabled,
       &M::apertureExpectedValue, &M::setApertureExpectedValue, "apertureAlertEnabled", 2,
       "L'ouverture n'est pas : ", "Ouverture détectée : "},
      {"shutter", "shutterAlert", &M::isShutterAlertShowing, &M::shutterAlertEnabled, &M::setShutterAlertEnabled,
       &M::shutterExpectedValue, &M::setShutterExpectedValue, "shutterAlertEnabled", 3,
       "La vitesse n'est pas : ", "Vitesse détectée : "},
  };
  return kRows;
}

/// The watch in which all four kinds are on and expect RAW, 400, f/8 and 1/125.
struct AllOnWorld : CameraWatchWorld {
  AllOnWorld() : CameraWatchWorld(true) {
    fake.defaults.values["isoAlertEnabled"] = true;
    fake.defaults.values["apertureAlertEnabled"] = true;
    fake.defaults.values["shutterAlertEnabled"] = true;
    fake.defaults.values["isoExpectedValue"] = std::string("400");
    fake.defaults.values["apertureExpectedValue"] = std::string("f/8");
    fake.defaults.values["shutterExpectedValue"] = std::string("1/125");
    start();
  }
  void checkAllRight() { monitor->checkAndShowAlerts("RAW", "400", "f/8", "1/125"); }
  void checkAllWrong() { monitor->checkAndShowAlerts("JPEG", "800", "f/4", "1/60"); }
};

TEST(FormatCheck, AnyFormatThatContainsRawInAnyCasePasses) {
  for (auto const format : {"RAW", "Raw", "raw", "Raw + JPEG", "RAW (14 bit)", "cRAW", "JPEG+rAw"}) {
    CameraWatchWorld world(true);
    world.start().checkAndShowAlerts(format, "", "", "");
    EXPECT_EQ(world.alertsShowing(), 0) << format;
    EXPECT_EQ(world.fake.panels.find("formatAlert"), nullptr) << format;
  }
}

TEST(FormatCheck, EveryOtherFormatRaisesTheAlert) {
  for (auto const format : {"JPEG", "TIFF", "", "R AW", "RÀW", "ra\nw"}) {
    CameraWatchWorld world(true);
    auto& monitor = world.start();
    monitor.checkAndShowAlerts(format, "", "", "");
    EXPECT_TRUE(monitor.isAlertShowing().get()) << format;
    EXPECT_EQ(world.alertsShowing(), 1) << format;
    auto const& panel = world.fake.panels.panel("formatAlert");
    EXPECT_NE(panel.find("Le format n'est pas : RAW"), nullptr) << format;
    EXPECT_NE(panel.find(std::string("Format détecté : ") + format), nullptr) << format;
  }
}

TEST(FormatCheck, AWrongFormatRaisesNoAlertWhileTheWatchIsOff) {
  CameraWatchWorld world;
  world.start().checkAndShowAlerts("JPEG", "", "", "");
  EXPECT_EQ(world.alertsShowing(), 0);
}

TEST(ValueCheck, AnEmptyExpectationRaisesNoAlertWhateverTheCameraIsSetTo) {
  for (auto const& kind : valueKinds()) {
    CameraWatchWorld world;
    (world.start().*kind.setOn)(true);
    world.round(kind.replyWith("3200"));
    EXPECT_EQ(world.alertsShowing(), 0) << kind.label;
  }
}

TEST(ValueCheck, AKindThatIsOffRaisesNoAlert) {
  for (auto const& kind : valueKinds()) {
    CameraWatchWorld world;
    (world.start().*kind.setExpected)("400");
    world.round(kind.replyWith("3200"));
    EXPECT_EQ(world.alertsShowing(), 0) << kind.label;
  }
}

TEST(ValueCheck, ADifferenceRaisesTheAlertAndTheNextRoundRefreshesTheSamePanelWhereItIs) {
  for (auto const& kind : valueKinds()) {
    SCOPED_TRACE(kind.label);
    CameraWatchWorld world;
    auto& monitor = world.start();
    (monitor.*kind.setOn)(true);
    (monitor.*kind.setExpected)("400");
    world.round(kind.replyWith("400"));
    EXPECT_EQ(world.alertsShowing(), 0);

    world.round(kind.replyWith("800"));
    EXPECT_TRUE((monitor.*kind.isShowing)().get());
    EXPECT_EQ(world.alertsShowing(), 1);
    auto& panel = world.fake.panels.panel(kind.panel);
    EXPECT_NE(panel.find(kind.firstLine + "400"), nullptr);
    EXPECT_NE(panel.find(kind.secondLine + "800"), nullptr);

    panel.dragTo({700, 500});
    world.fake.loop.runReady();
    world.fake.journal.clear();
    world.round(kind.replyWith("640"));
    EXPECT_EQ(world.fake.journal.entries(), Strings{kind.panel + ".setContent"});
    EXPECT_EQ(&world.fake.panels.panel(kind.panel), &panel);
    EXPECT_NE(panel.find(kind.secondLine + "640"), nullptr);
    EXPECT_EQ(panel.frame().origin, (BottomLeftPoint{700, 500}));
  }
}

TEST(ValueCheck, TextsAreComparedExactly) {
  struct Row {
    std::string expected;
    std::string detected;
    bool raises;
  };
  for (auto const& kind : valueKinds()) {
    for (auto const& [expected, detected, raises] : {
             Row{"400", "400", false},
             Row{"400", "400 ", true},
             Row{"400", " 400", true},
             Row{"400", "0400", true},
             Row{"f/8", "f/8.0", true},
             Row{"f/8", "F/8", true},
             Row{"Auto", "auto", true},
             Row{"é", "e\u0301", true},
             Row{" ", "", true},
         }) {
      CameraWatchWorld world;
      auto& monitor = world.start();
      (monitor.*kind.setOn)(true);
      (monitor.*kind.setExpected)(expected);
      world.round(kind.replyWith(detected));
      EXPECT_EQ(world.alertsShowing(), raises ? 1 : 0) << kind.label << ": " << expected << " against " << detected;
    }
  }
}

TEST(ValueCheck, AKindThatIsSwitchedOffHidesInTheNextRound) {
  for (auto const& kind : valueKinds()) {
    AllOnWorld world;
    world.round(kind.replyWith("x"));
    auto& monitor = *world.monitor;
    ASSERT_TRUE((monitor.*kind.isShowing)().get()) << kind.label;
    (monitor.*kind.setOn)(false);
    EXPECT_TRUE((monitor.*kind.isShowing)().get()) << kind.label << ": hidden at once";
    world.round(kind.replyWith("x"));
    EXPECT_FALSE((monitor.*kind.isShowing)().get()) << kind.label;
    EXPECT_FALSE(world.fake.panels.panel(kind.panel).isVisible()) << kind.label;
  }
}

TEST(Checks, TheKindsAreTreatedInOneOrderAndEachForItself) {
  AllOnWorld world;
  world.fake.journal.clear();
  world.checkAllWrong();
  Strings expected;
  for (std::string const name : {"formatAlert", "isoAlert", "apertureAlert", "shutterAlert"}) {
    for (auto const& entry :
         {"panels.makePanel " + name, name + ".centre", name + ".setContent", name + ".orderFrontRegardless"}) {
      expected.push_back(entry);
    }
  }
  EXPECT_EQ(world.fake.journal.entries(), expected);

  world.fake.journal.clear();
  world.monitor->checkAndShowAlerts("RAW", "800", "f/8", "1/60");
  EXPECT_EQ(world.fake.journal.entries(), (Strings{"formatAlert.orderOut", "isoAlert.setContent",
                                                   "apertureAlert.orderOut", "shutterAlert.setContent"}));
}

TEST(Checks, PanelsAreMadeOnceAndThenOnlyOrderedInAndOut) {
  AllOnWorld world;
  world.checkAllWrong();
  world.fake.journal.clear();
  for (int i = 0; i < 3; ++i) {
    world.checkAllRight();
    EXPECT_EQ(world.alertsShowing(), 0);
    world.checkAllWrong();
    EXPECT_EQ(world.alertsShowing(), 4);
  }
  EXPECT_EQ(world.fake.panels.panels.size(), 4u);
  EXPECT_TRUE(std::ranges::none_of(world.fake.journal.entries(), [](std::string const& entry) {
    return entry.find("makePanel") != std::string::npos || entry.find("centre") != std::string::npos ||
           entry.find("setFrame") != std::string::npos;
  }));
}

TEST(Checks, TwoKindsAtOnceHaveTwoPanelsEachAtItsOwnPlace) {
  CameraWatchWorld world(true);
  world.fake.defaults.values["isoAlertEnabled"] = true;
  world.fake.defaults.values["isoExpectedValue"] = std::string("400");
  world.fake.defaults.values["formatAlertX"] = 10.0;
  world.fake.defaults.values["formatAlertY"] = 20.0;
  world.fake.defaults.values["isoAlertX"] = 30.0;
  world.fake.defaults.values["isoAlertY"] = 40.0;
  world.start();
  world.round("JPEG||800||f/8||1/125");
  EXPECT_EQ(world.alertsShowing(), 2);
  EXPECT_EQ(world.fake.panels.panel("formatAlert").frame().origin, (BottomLeftPoint{10, 20}));
  EXPECT_EQ(world.fake.panels.panel("isoAlert").frame().origin, (BottomLeftPoint{30, 40}));
}

TEST(Checks, AlertsHideWhenCaptureOneQuitsAndReturnWithItAndTheMismatch) {
  AllOnWorld world;
  world.fake.scripts.answersText("JPEG||800||f/8||1/125");
  detach(world.monitor->checkAndStartIfNeeded());
  world.fake.loop.advance(0s);
  ASSERT_EQ(world.alertsShowing(), 2);
  world.fake.panels.panel("isoAlert").dragTo({5, 6});

  world.fake.workspace.running.clear();
  world.fake.loop.advance(1s);
  EXPECT_EQ(world.alertsShowing(), 0);
  world.fake.loop.advance(5s);
  EXPECT_EQ(world.alertsShowing(), 0);

  world.fake.workspace.running = {captureOne()};
  world.fake.loop.advance(1s);
  EXPECT_EQ(world.alertsShowing(), 2);
  EXPECT_EQ(world.fake.panels.panel("isoAlert").frame().origin, (BottomLeftPoint{5, 6}));
}

TEST(Checks, ADismissedAlertIsRaisedAgainByTheNextMismatch) {
  AllOnWorld world;
  world.checkAllWrong();
  world.monitor->dismissAllAlerts();
  EXPECT_EQ(world.alertsShowing(), 0);
  world.checkAllWrong();
  EXPECT_EQ(world.alertsShowing(), 4);
}

TEST(Dismissal, ClearsEachFlagAndThenOrdersItsPanelOutInOneOrder) {
  AllOnWorld world;
  world.checkAllWrong();
  auto& monitor = *world.monitor;
  auto& journal = world.fake.journal;
  std::vector<Subscription> observers;
  auto const note = [&](Published<bool> const& flag, std::string const& name) {
    observers.push_back(
        flag.willChange([&journal, name](bool value) { journal.add(name + (value ? " on" : " off")); }));
  };
  note(monitor.isAlertShowing(), "format");
  note(monitor.isIsoAlertShowing(), "iso");
  note(monitor.isApertureAlertShowing(), "aperture");
  note(monitor.isShutterAlertShowing(), "shutter");
  journal.clear();
  monitor.dismissAllAlerts();
  EXPECT_EQ(journal.entries(),
            (Strings{"format off", "formatAlert.orderOut", "iso off", "isoAlert.orderOut", "aperture off",
                     "apertureAlert.orderOut", "shutter off", "shutterAlert.orderOut"}));
}

TEST(Dismissal, WithoutAnyPanelMakesNone) {
  CameraWatchWorld world;
  world.start().dismissAllAlerts();
  EXPECT_TRUE(world.fake.panels.panels.empty());
}

TEST(AlertSwitch, IsReadFromTheDefaultsAndStoredOnEveryWrite) {
  for (auto const& kind : valueKinds()) {
    CameraWatchWorld world;
    world.fake.defaults.values[kind.enabledKey] = true;
    auto& monitor = world.start();
    EXPECT_TRUE((monitor.*kind.isOn)().get()) << kind.label;
    (monitor.*kind.setOn)(false);
    (monitor.*kind.setOn)(false);
    EXPECT_EQ(world.fake.defaults.writes,
              (std::vector<platform::DefaultsEntry>{{kind.enabledKey, false}, {kind.enabledKey, false}}))
        << kind.label;
  }
}

TEST(AlertSwitch, AStoredValueOfAnotherTypeCountsAsOff) {
  for (auto const& kind : valueKinds()) {
    CameraWatchWorld world;
    world.fake.defaults.values[kind.enabledKey] = std::string("true");
    EXPECT_FALSE((world.start().*kind.isOn)().get()) << kind.label;
  }
}

TEST(AlertSwitch, SwitchingOnStartsThePollAnewAndSwitchingOffDoesNot) {
  for (auto const& kind : valueKinds()) {
    CameraWatchWorld world(true);
    auto& monitor = world.startReady();
    world.fake.scripts.answersText(kFullReply);
    world.fake.loop.advance(500ms);
    auto const before = world.statusScripts();
    (monitor.*kind.setOn)(true);
    world.fake.loop.advance(0s);
    EXPECT_EQ(world.statusScripts(), before + 1) << kind.label;
    (monitor.*kind.setOn)(false);
    world.fake.loop.advance(0s);
    EXPECT_EQ(world.statusScripts(), before + 1) << kind.label;
    world.fake.loop.advance(1s);
    EXPECT_EQ(world.statusScripts(), before + 2) << kind.label << ": the poll goes on";
  }
}

TEST(AlertSwitch, SwitchingOnStartsNothingWhileTheWatchIsOffOrThePermissionIsMissing) {
  for (auto const& kind : valueKinds()) {
    CameraWatchWorld off;
    (off.startReady().*kind.setOn)(true);
    off.fake.loop.advance(3s);
    EXPECT_EQ(off.statusScripts(), 0) << kind.label;

    CameraWatchWorld notReady(true);
    (notReady.start().*kind.setOn)(true);
    notReady.fake.loop.advance(3s);
    EXPECT_EQ(notReady.statusScripts(), 0) << kind.label;
  }
}

TEST(AlertTexts, ForeignTextsPassThroughUnharmed) {
  std::string const everyControl = [] {
    std::string text;
    for (char c = 1; c < 32; ++c) text += c;
    return text;
  }();
  for (auto const& value :
       {std::string(10'000, '9'), std::string("ש ١٢٣ \u202Eتجربة"), std::string("📷👩🏽‍🚀"), everyControl,
        std::string("a\0b", 3), std::string("\xff\xfe")}) {
    AllOnWorld world;
    world.monitor->checkAndShowAlerts(value, value, value, value);
    ASSERT_EQ(world.alertsShowing(), 4);
    EXPECT_NE(world.fake.panels.panel("formatAlert").find("Format détecté : " + value), nullptr);
    for (auto const& kind : valueKinds()) {
      EXPECT_NE(world.fake.panels.panel(kind.panel).find(kind.secondLine + value), nullptr) << kind.label;
    }
  }
}

}  // namespace
}  // namespace morla::camerawatch
