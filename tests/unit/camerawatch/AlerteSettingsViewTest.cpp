#include "camerawatch/AlerteSettingsView.h"

#include <gtest/gtest.h>

#include "SettingsWindowWorld.h"

namespace morla::camerawatch {
namespace {

using Strings = std::vector<std::string>;

TEST(PermissionPages, FollowTheStateOfThePermission) {
  SettingsWindowWorld world;
  world.open();
  EXPECT_TRUE(world.shows("Vérification..."));
  world.fake.scripts.answersError(-1712);
  detach(world.monitor->checkPermissionState());
  world.fake.loop.advance(0s);
  EXPECT_TRUE(world.shows("Autorisation requise"));
  world.fake.scripts.answersError(-1743);
  detach(world.monitor->checkPermissionState());
  world.fake.loop.advance(0s);
  EXPECT_TRUE(world.shows("Permission refusée"));
  world.fake.workspace.running.clear();
  detach(world.monitor->checkPermissionState());
  world.fake.loop.advance(0s);
  EXPECT_TRUE(world.shows("Capture One introuvable"));
}

TEST(PermissionPages, AutoriserRefusedLeadsToTheDeniedPage) {
  SettingsWindowWorld world;
  world.fake.scripts.answersError(-1712);
  world.start();
  detach(world.monitor->checkPermissionState());
  world.fake.loop.advance(0s);
  auto& panel = world.open();
  world.fake.scripts.answersError(-1743);
  panel.press("Autoriser");
  world.fake.loop.advance(0s);
  EXPECT_TRUE(world.shows("Permission refusée"));
  EXPECT_EQ(world.fake.defaults.boolean("automationPermissionDenied"), true);
}

/// A window on the page that asks for the permission.
struct AskingWorld : SettingsWindowWorld {
  explicit AskingWorld(bool isEnabled) : SettingsWindowWorld(isEnabled) {
    fake.scripts.answersError(-1712);
    start();
    detach(monitor->checkPermissionState());
    fake.loop.advance(0s);
    open();
    fake.background.takes(500ms);
    fake.scripts.answersText("OK");
  }
};

TEST(PermissionPages, AutoriserGrantedStartsThePoll) {
  AskingWorld world(true);
  world.window().press("Autoriser");
  world.fake.loop.advance(500ms);
  EXPECT_TRUE(world.shows("Surveillance active"));
  EXPECT_EQ(world.fake.background.startedJobs(), 3) << "two probes, and the first round of the poll";
}

TEST(PermissionPages, AutoriserIsDisabledWhileTheUserIsAskedAndEnabledAgainWithoutAnAnswer) {
  AskingWorld world(false);
  auto& panel = world.window();
  panel.press("Autoriser");
  world.fake.loop.advance(1ms);
  EXPECT_FALSE(panel.findControl("Autoriser")->isEnabled);
  world.fake.scripts.answersError(-1712);
  world.fake.loop.advance(499ms);
  EXPECT_TRUE(world.shows("Autorisation requise"));
  EXPECT_TRUE(panel.findControl("Autoriser")->isEnabled);
}

TEST(PermissionPages, AWindowThatOpensAnewDoesNotRememberAnEarlierRequest) {
  AskingWorld world(false);
  world.window().press("Autoriser");
  world.fake.loop.advance(1ms);
  world.window().close();
  world.controller->showSettings();
  EXPECT_TRUE(world.window().findControl("Autoriser")->isEnabled);
}

TEST(PermissionPages, WhatIsGrantedAfterTheWindowWasClosedAndOpenedAgainStillStartsThePoll) {
  AskingWorld world(true);
  world.window().press("Autoriser");
  world.fake.loop.advance(1ms);
  world.window().close();
  world.controller->showSettings();
  world.fake.loop.advance(499ms);
  EXPECT_EQ(world.fake.background.startedJobs(), 3);
  EXPECT_TRUE(world.shows("Surveillance active"));
}

TEST(PermissionPages, ReglagesOpensTheSystemsPage) {
  SettingsWindowWorld world;
  world.fake.scripts.answersError(-1743);
  world.start();
  detach(world.monitor->checkPermissionState());
  world.fake.loop.advance(0s);
  world.open().press("Réglages");
  EXPECT_EQ(world.fake.workspace.openedUrls,
            Strings{"x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"});
}

TEST(PermissionPages, ReessayerChecksAgain) {
  for (bool const isMissing : {false, true}) {
    SettingsWindowWorld world;
    if (isMissing) world.fake.workspace.running.clear();
    world.fake.scripts.answersError(-1743);
    world.start();
    detach(world.monitor->checkPermissionState());
    world.fake.loop.advance(0s);
    auto& panel = world.open();
    world.fake.workspace.running = {captureOne()};
    world.fake.scripts.answersText("OK");
    world.fake.background.takes(100ms);
    panel.press("Réessayer");
    world.fake.loop.advance(1ms);
    EXPECT_TRUE(world.shows("Vérification..."));
    world.fake.loop.advance(99ms);
    EXPECT_TRUE(world.shows("Aucune alerte activée"));
  }
}

struct Row {
  std::string title;
  std::string pickerLabel;
  std::string enabledKey;
  std::string expectedKey;
  Strings values;
};
std::vector<Row> const kValueRows{
    {"ISO", "ISO attendu", "isoAlertEnabled", "isoExpectedValue", {"100", "200", "400"}},
    {"Ouverture", "Ouverture attendue", "apertureAlertEnabled", "apertureExpectedValue", {"f/4", "f/8"}},
    {"Vitesse", "Vitesse attendue", "shutterAlertEnabled", "shutterExpectedValue", {"1/60", "1/125"}},
};

TEST(AlertRows, SwitchesWriteThrough) {
  for (auto const& [title, key] :
       {std::pair{"Format", "formatMonitorEnabled"}, std::pair{"ISO", "isoAlertEnabled"},
        std::pair{"Ouverture", "apertureAlertEnabled"}, std::pair{"Vitesse", "shutterAlertEnabled"}}) {
    SettingsWindowWorld world;
    auto& panel = world.openReady();
    EXPECT_FALSE(world.control<view::Toggle>(title).isOn) << title;
    panel.turn(title);
    EXPECT_EQ(world.fake.defaults.boolean(key), true) << title;
    world.fake.loop.runReady();
    EXPECT_TRUE(world.control<view::Toggle>(title).isOn) << title;
    panel.turn(title);
    EXPECT_EQ(world.fake.defaults.boolean(key), false) << title;
    world.fake.loop.runReady();
    EXPECT_FALSE(world.control<view::Toggle>(title).isOn) << title;
  }
}

TEST(AlertRows, TheFormatSwitchStartsAndStopsThePoll) {
  SettingsWindowWorld world;
  auto& panel = world.openReady();
  panel.turn("Format");
  world.fake.loop.advance(2s);
  EXPECT_EQ(world.statusScripts(), 3);
  panel.turn("Format");
  world.fake.loop.advance(5s);
  EXPECT_EQ(world.statusScripts(), 3);
}

TEST(AlertRows, PickersOfferADashAndTheCamerasValuesInItsOrder) {
  SettingsWindowWorld world(true);
  world.openReady();
  for (auto const& row : kValueRows) {
    Strings expected{"—"};
    expected.insert(expected.end(), row.values.begin(), row.values.end());
    auto const picker = world.control<view::Picker>(row.pickerLabel);
    EXPECT_EQ(picker.options, expected) << row.title;
    EXPECT_EQ(picker.selection, 0u) << row.title;
  }
}

TEST(AlertRows, PickersWriteThroughAndTheDashStandsForNoExpectation) {
  for (auto const& row : kValueRows) {
    SettingsWindowWorld world(true);
    world.fake.defaults.values[row.enabledKey] = true;
    auto& panel = world.openReady();
    for (std::size_t i = 0; i < row.values.size(); ++i) {
      panel.choose(row.pickerLabel, row.values[i]);
      EXPECT_EQ(world.fake.defaults.text(row.expectedKey), row.values[i]);
      world.fake.loop.runReady();
      EXPECT_EQ(world.control<view::Picker>(row.pickerLabel).selection, i + 1);
    }
    panel.choose(row.pickerLabel, "—");
    EXPECT_EQ(world.fake.defaults.text(row.expectedKey), "");
    world.fake.loop.runReady();
    EXPECT_EQ(world.control<view::Picker>(row.pickerLabel).selection, 0u);
  }
}

TEST(AlertRows, APickerIsUsableOnlyWhileItsSwitchIsOn) {
  for (auto const& row : kValueRows) {
    SettingsWindowWorld world(true);
    auto& panel = world.openReady();
    EXPECT_FALSE(panel.findControl(row.pickerLabel)->isEnabled) << row.title;
    panel.turn(row.title);
    world.fake.loop.runReady();
    for (auto const& other : kValueRows) {
      EXPECT_EQ(panel.findControl(other.pickerLabel)->isEnabled, other.title == row.title) << other.title;
    }
  }
}

TEST(AlertRows, AnExpectationThatTheCameraDoesNotOfferIsShownButCannotBeChosen) {
  for (auto const& row : kValueRows) {
    SettingsWindowWorld world(true);
    world.fake.defaults.values[row.expectedKey] = std::string("51200");
    world.openReady();
    auto const picker = world.control<view::Picker>(row.pickerLabel);
    EXPECT_EQ(picker.selection, std::nullopt) << row.title;
    EXPECT_EQ(picker.unlisted, "51200") << row.title;
    EXPECT_EQ(picker.options.size(), row.values.size() + 1) << row.title;
  }
}

TEST(AlertRows, AChoiceCountsAsItWasShownAlsoWhenTheCameraHasChangedSince) {
  SettingsWindowWorld world(true);
  world.fake.defaults.values["isoAlertEnabled"] = true;
  auto& panel = world.openReady();
  auto const picker = world.control<view::Picker>("ISO attendu");
  world.statusReply = "RAW||50||f/8||1/125||50|3200||f/8||1/125||Camera A";
  world.fake.loop.advance(1s);
  EXPECT_EQ(world.control<view::Picker>("ISO attendu").options, (Strings{"—", "50", "3200"}));
  picker.action(2);
  EXPECT_EQ(world.monitor->isoExpectedValue().get(), "200");
  picker.action(99);
  EXPECT_EQ(world.monitor->isoExpectedValue().get(), "200");
  EXPECT_TRUE(panel.isVisible());
}

TEST(AlertRows, LongAndForeignListsPassThroughUnharmed) {
  std::string list;
  for (int i = 0; i < 500; ++i) list += "|" + std::to_string(i);
  Strings const strange{std::string(10'000, '8'), "ש ١٢٣", "📷", "a\nb\t\x01", "\xff"};
  for (auto const& value : strange) list += "|" + value;
  SettingsWindowWorld world(true);
  world.fake.defaults.values["isoAlertEnabled"] = true;
  auto& panel = world.openReady("RAW||100||f/8||1/125||" + list + "||f/8||1/125||" + strange[0]);
  EXPECT_EQ(world.control<view::Picker>("ISO attendu").options.size(), 506u);
  for (auto const& value : strange) {
    panel.choose("ISO attendu", value);
    EXPECT_EQ(world.fake.defaults.text("isoExpectedValue"), value);
  }
  EXPECT_TRUE(world.shows(strange[0])) << "the camera's name";
}

TEST(StatusRow, ShowsTheCameraWhileItIsConnectedAndKnown) {
  SettingsWindowWorld world(true);
  world.openReady();
  EXPECT_TRUE(world.shows("Camera A"));
  world.statusReply = "CAMERA_OFF";
  world.fake.loop.advance(1s);
  EXPECT_FALSE(world.shows("Camera A"));
  EXPECT_TRUE(world.shows("Boîtier éteint ou déconnecté"));
  world.statusReply = kFullReply;
  world.fake.loop.advance(1s);
  EXPECT_TRUE(world.shows("Camera A"));
}

TEST(StatusRow, FollowsTheAlerts) {
  SettingsWindowWorld world(true);
  world.fake.defaults.values["isoAlertEnabled"] = true;
  world.fake.defaults.values["isoExpectedValue"] = std::string("200");
  world.openReady();
  EXPECT_TRUE(world.shows("1 alerte active"));
  world.statusReply = "JPEG||400||f/8||1/125";
  world.fake.loop.advance(1s);
  EXPECT_TRUE(world.shows("2 alertes actives"));
  world.statusReply = "RAW||200||f/8||1/125";
  world.fake.loop.advance(1s);
  EXPECT_TRUE(world.shows("Surveillance active"));
}

}  // namespace
}  // namespace morla::camerawatch
