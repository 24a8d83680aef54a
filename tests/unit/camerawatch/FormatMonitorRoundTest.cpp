#include <gtest/gtest.h>

#include "CameraWatchWorld.h"
#include "base/Trace.h"
#include "base/unicode/Unicode.h"

namespace morla::camerawatch {
namespace {

using Strings = std::vector<std::string>;

TEST(Round, SendsTheStatusScriptToTheTarget) {
  CameraWatchWorld world;
  world.start();
  world.round(kFullReply);
  ASSERT_EQ(world.fake.scripts.sources.size(), 1u);
  auto const& source = world.fake.scripts.sources[0];
  std::string const target = "tell application id \"com.captureone.captureone16\"";
  EXPECT_TRUE(source.starts_with(target + "\n    if (count of documents) > 0 then\n"));
  EXPECT_EQ(source.size(), target.size() + 1369);
}

TEST(Round, AWholeReadingIsPublishedAndChecked) {
  CameraWatchWorld world(true);
  auto& monitor = world.start();
  world.round(kFullReply);
  EXPECT_EQ(monitor.lastDetectedFormat().get(), "RAW");
  EXPECT_EQ(monitor.lastDetectedISO().get(), "400");
  EXPECT_EQ(monitor.lastDetectedAperture().get(), "f/8");
  EXPECT_EQ(monitor.lastDetectedShutter().get(), "1/125");
  EXPECT_EQ(monitor.availableISOs().get(), (Strings{"100", "200", "400"}));
  EXPECT_EQ(monitor.availableApertures().get(), (Strings{"f/4", "f/8"}));
  EXPECT_EQ(monitor.availableShutters().get(), (Strings{"1/60", "1/125"}));
  EXPECT_EQ(monitor.cameraName().get(), "Camera A");
  EXPECT_TRUE(monitor.isCameraConnected().get());
  EXPECT_EQ(world.alertsShowing(), 0);
}

TEST(Round, PublishesInAFixedOrder) {
  CameraWatchWorld world;
  world.start();
  std::vector<std::string> names;
  Trace const trace(
      [&names](std::string const& line) {
        auto const at = line.find("\"FormatMonitor.");
        if (at != std::string::npos) names.push_back(line.substr(at + 15, line.find('"', at + 1) - at - 15));
      },
      [] { return std::chrono::milliseconds(0); });
  world.round(kFullReply);
  EXPECT_EQ(names,
            (Strings{"lastDetectedFormat", "lastDetectedISO", "lastDetectedAperture", "lastDetectedShutter",
                     "isCameraConnected", "availableISOs", "availableApertures", "availableShutters", "cameraName",
                     "isAlertShowing", "isIsoAlertShowing", "isApertureAlertShowing", "isShutterAlertShowing"}));
}

TEST(Round, FourFieldsLeaveTheListsAndTheNameAndAreChecked) {
  CameraWatchWorld world(true);
  auto& monitor = world.start();
  world.round(kFullReply);
  world.round("JPEG||800||f/2.8||1/250");
  EXPECT_EQ(monitor.lastDetectedFormat().get(), "JPEG");
  EXPECT_EQ(monitor.lastDetectedISO().get(), "800");
  EXPECT_EQ(monitor.availableISOs().get(), (Strings{"100", "200", "400"}));
  EXPECT_EQ(monitor.cameraName().get(), "Camera A");
  EXPECT_TRUE(monitor.isAlertShowing().get());
}

TEST(Round, SixFieldsLeaveTheLists) {
  CameraWatchWorld world;
  auto& monitor = world.start();
  world.round(kFullReply);
  world.round("RAW||100||f/4||1/60||50||f/1");
  EXPECT_EQ(monitor.availableISOs().get(), (Strings{"100", "200", "400"}));
}

TEST(Round, SevenFieldsReplaceTheListsAndLeaveTheName) {
  CameraWatchWorld world;
  auto& monitor = world.start();
  world.round(kFullReply);
  world.round("RAW||100||f/4||1/60||50||f/1||");
  EXPECT_EQ(monitor.availableISOs().get(), Strings{"50"});
  EXPECT_EQ(monitor.availableShutters().get(), Strings{});
  EXPECT_EQ(monitor.cameraName().get(), "Camera A");
}

TEST(Round, ThreeFieldsAreShownAsTheFormatWordAndClearTheCamera) {
  CameraWatchWorld world;
  auto& monitor = world.start();
  world.round(kFullReply);
  world.raiseAlert();
  world.round("RAW||400||f/8");
  EXPECT_EQ(monitor.lastDetectedFormat().get(), "RAW||400||f/8");
  EXPECT_EQ(monitor.lastDetectedISO().get(), std::nullopt);
  EXPECT_FALSE(monitor.isCameraConnected().get());
  EXPECT_EQ(world.alertsShowing(), 0);
}

TEST(Round, FieldsBehindTheEighthAreIgnored) {
  CameraWatchWorld world;
  auto& monitor = world.start();
  world.round(std::string(kFullReply) + "||nine");
  EXPECT_EQ(monitor.cameraName().get(), "Camera A");
  EXPECT_EQ(monitor.lastDetectedShutter().get(), "1/125");
  EXPECT_EQ(world.alertsShowing(), 0);
}

TEST(Round, AMegabyteIsPublishedWhereverItStands) {
  std::string const megabyte(1 << 20, 'x');
  CameraWatchWorld world;
  auto& monitor = world.start();
  world.round(megabyte);
  EXPECT_EQ(monitor.lastDetectedFormat().get(), megabyte);
  EXPECT_FALSE(monitor.isCameraConnected().get());
  world.round("RAW||" + megabyte + "||f/8||1/125||" + megabyte + "||f/8||1/125||Camera A");
  EXPECT_EQ(monitor.lastDetectedISO().get(), megabyte);
  EXPECT_EQ(monitor.availableISOs().get(), Strings{megabyte});
}

TEST(Round, BytesThatAreNoUtf8ArePublishedAsTheyCame) {
  CameraWatchWorld world;
  auto& monitor = world.start();
  std::string json;
  {
    Trace const trace([&json](std::string const& line) { json += line + '\n'; },
                      [] { return std::chrono::milliseconds(0); });
    world.round("\xFF||\xC3||f/8||1/125||\x80|100||f/8||1/125||\xE2\x82");
  }
  EXPECT_EQ(monitor.lastDetectedFormat().get(), "\xFF");
  EXPECT_EQ(monitor.availableISOs().get(), (Strings{"\x80", "100"}));
  EXPECT_EQ(monitor.cameraName().get(), "\xE2\x82");
  EXPECT_TRUE(unicode::isWellFormed(json)) << "the trace can be read all the same";
}

TEST(Round, AReplyIsNotTrimmed) {
  CameraWatchWorld world;
  auto& monitor = world.start();
  world.round(" RAW");
  EXPECT_EQ(monitor.lastDetectedFormat().get(), " RAW");
}

TEST(Round, EveryStatusWordClearsTheCameraAndDismisses) {
  for (auto const word : {"CAMERA_OFF", "NO_CAMERA", "NO_DOCUMENT", "ERROR"}) {
    CameraWatchWorld world;
    auto& monitor = world.start();
    world.round(kFullReply);
    world.raiseAlert();
    world.round(word);
    EXPECT_EQ(monitor.lastDetectedFormat().get(), word);
    EXPECT_EQ(monitor.lastDetectedISO().get(), std::nullopt) << word;
    EXPECT_EQ(monitor.lastDetectedAperture().get(), std::nullopt) << word;
    EXPECT_EQ(monitor.lastDetectedShutter().get(), std::nullopt) << word;
    EXPECT_FALSE(monitor.isCameraConnected().get()) << word;
    EXPECT_EQ(monitor.cameraName().get(), "Camera A") << word;
    EXPECT_EQ(monitor.availableISOs().get().size(), 3u) << word;
    EXPECT_EQ(world.alertsShowing(), 0) << word;
  }
}

TEST(Round, NoAnswerIsAnErrorThatLeavesTheCameraAsItWas) {
  CameraWatchWorld world;
  auto& monitor = world.start();
  world.round(kFullReply);
  world.raiseAlert();
  world.fake.scripts.answersNothing();
  detach(monitor.checkCaptureFormat());
  world.fake.loop.advance(0s);
  EXPECT_EQ(monitor.lastDetectedFormat().get(), "ERROR");
  EXPECT_EQ(monitor.lastDetectedISO().get(), "400");
  EXPECT_TRUE(monitor.isCameraConnected().get());
  EXPECT_EQ(world.alertsShowing(), 0);
}

TEST(Round, CaptureOneNotRunningIsLighterThanAClearedCamera) {
  CameraWatchWorld world;
  auto& monitor = world.start();
  world.round(kFullReply);
  world.raiseAlert();
  world.fake.workspace.running.clear();
  world.round(kFullReply);
  EXPECT_EQ(monitor.lastDetectedFormat().get(), "NOT_RUNNING");
  EXPECT_EQ(monitor.lastDetectedISO().get(), std::nullopt);
  EXPECT_TRUE(monitor.isCameraConnected().get());
  EXPECT_EQ(monitor.availableISOs().get().size(), 3u);
  EXPECT_EQ(world.alertsShowing(), 0);
  EXPECT_EQ(world.fake.scripts.sources.size(), 1u);
}

TEST(CameraChange, GivesUpTheExpectationsThatTheNewCameraCannotMeet) {
  CameraWatchWorld world;
  world.fake.defaults.values = {{"isoExpectedValue", std::string("400")},
                                {"apertureExpectedValue", std::string("f/8")},
                                {"shutterExpectedValue", std::string("1/125")}};
  auto& monitor = world.start();
  world.round(kFullReply);
  world.round("RAW||100||f/8||1/60||50|100||f/8|f/11||1/60||Camera B");
  EXPECT_EQ(monitor.isoExpectedValue().get(), "");
  EXPECT_EQ(monitor.apertureExpectedValue().get(), "f/8");
  EXPECT_EQ(monitor.shutterExpectedValue().get(), "");
  EXPECT_EQ(world.fake.defaults.text("isoExpectedValue"), "");
  EXPECT_EQ(world.fake.defaults.text("apertureExpectedValue"), "f/8");
  EXPECT_EQ(monitor.cameraName().get(), "Camera B");
}

TEST(CameraChange, AnEmptyExpectationIsStoredAgainAsEmpty) {
  CameraWatchWorld world;
  world.start();
  world.round(kFullReply);
  EXPECT_FALSE(world.fake.defaults.hasValue("isoExpectedValue"));
  world.round("RAW||100||f/8||1/60||50||f/8||1/60||Camera B");
  EXPECT_EQ(world.fake.defaults.text("isoExpectedValue"), "");
}

TEST(CameraChange, TheFirstCameraAfterLaunchIsNoChange) {
  CameraWatchWorld world;
  world.fake.defaults.values["isoExpectedValue"] = std::string("6400");
  auto& monitor = world.start();
  world.round(kFullReply);
  EXPECT_EQ(monitor.isoExpectedValue().get(), "6400");
}

TEST(CameraChange, TheSameCameraAfterAPauseIsNoChange) {
  CameraWatchWorld world;
  world.fake.defaults.values["isoExpectedValue"] = std::string("6400");
  auto& monitor = world.start();
  world.round(kFullReply);
  world.round("CAMERA_OFF");
  world.round(kFullReply);
  EXPECT_EQ(monitor.isoExpectedValue().get(), "6400");
}

TEST(CameraChange, AnotherCameraAfterAPauseIsAChange) {
  CameraWatchWorld world;
  world.fake.defaults.values["isoExpectedValue"] = std::string("6400");
  auto& monitor = world.start();
  world.round(kFullReply);
  world.round("CAMERA_OFF");
  world.round("RAW||100||f/8||1/60||50||f/8||1/60||Camera B");
  EXPECT_EQ(monitor.isoExpectedValue().get(), "");
}

TEST(CameraChange, NamesAreComparedExactly) {
  CameraWatchWorld world;
  world.fake.defaults.values["isoExpectedValue"] = std::string("6400");
  auto& monitor = world.start();
  world.round(kFullReply);
  world.round("RAW||400||f/8||1/125||100||f/4||1/60||camera a");
  EXPECT_EQ(monitor.isoExpectedValue().get(), "");
}

TEST(ExpectedValues, AreReadFromTheDefaultsAndStoredOnEveryWrite) {
  CameraWatchWorld world;
  world.fake.defaults.values = {{"isoExpectedValue", std::string("200")}, {"shutterExpectedValue", std::int64_t{5}}};
  auto& monitor = world.start();
  EXPECT_EQ(monitor.isoExpectedValue().get(), "200");
  EXPECT_EQ(monitor.apertureExpectedValue().get(), "");
  EXPECT_EQ(monitor.shutterExpectedValue().get(), "");
  monitor.setApertureExpectedValue("f/8");
  monitor.setShutterExpectedValue("1/60");
  EXPECT_EQ(world.fake.defaults.text("apertureExpectedValue"), "f/8");
  EXPECT_EQ(world.fake.defaults.text("shutterExpectedValue"), "1/60");
}

}  // namespace
}  // namespace morla::camerawatch
