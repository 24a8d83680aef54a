#include "camerawatch/StatusReply.h"

#include <gtest/gtest.h>

namespace morla::camerawatch {
namespace {

using Strings = std::vector<std::string>;

TEST(StatusReply, EightFieldsAreAWholeReading) {
  auto const reply = parseStatusReply("RAW||400||f/8||1/125||100|200|400||f/4|f/8||1/60|1/125||Camera A");
  EXPECT_EQ(reply, StatusReply(CameraReading{"RAW", "400", "f/8", "1/125",
                                             AvailableValues{{"100", "200", "400"}, {"f/4", "f/8"}, {"1/60", "1/125"}},
                                             "Camera A"}));
}

TEST(StatusReply, EmptyPiecesOfAListAreDropped) {
  EXPECT_EQ(parseAvailableValues("|100||"), Strings{"100"});
  EXPECT_EQ(parseAvailableValues(""), Strings{});
  EXPECT_EQ(parseAvailableValues("|||"), Strings{});
  EXPECT_EQ(parseAvailableValues(" 100 |100"), (Strings{" 100 ", "100"}));
  EXPECT_EQ(parseAvailableValues("100|100"), (Strings{"100", "100"}));
}

TEST(StatusReply, TheNumberOfFieldsDecidesWhatIsKnown) {
  struct Row {
    std::string_view label;
    std::string_view reply;
    bool isReading;
    bool hasLists;
    bool hasName;
  };
  for (auto const& [label, reply, isReading, hasLists, hasName] : {
           Row{"nothing", "", false, false, false},
           Row{"one", "RAW", false, false, false},
           Row{"three", "RAW||400||f/8", false, false, false},
           Row{"four", "JPEG||800||f/2.8||1/250", true, false, false},
           Row{"four empty ones", "||||||", true, false, false},
           Row{"six", "RAW||400||f/8||1/125||100||f/4", true, false, false},
           Row{"seven", "RAW||400||f/8||1/125||100||f/4||1/60", true, true, false},
           Row{"eight", "RAW||400||f/8||1/125||100||f/4||1/60||A", true, true, true},
           Row{"nine", "RAW||400||f/8||1/125||100||f/4||1/60||A||ignored", true, true, true},
       }) {
    auto const parsed = parseStatusReply(reply);
    auto const* reading = std::get_if<CameraReading>(&parsed);
    ASSERT_EQ(reading != nullptr, isReading) << label;
    if (reading == nullptr) {
      EXPECT_EQ(std::get<NoReading>(parsed).text, reply) << label;
      continue;
    }
    EXPECT_EQ(reading->available.has_value(), hasLists) << label;
    EXPECT_EQ(reading->cameraName.has_value(), hasName) << label;
  }
}

TEST(StatusReply, FieldsAfterTheEighthAreIgnored) {
  auto const parsed = parseStatusReply("RAW||400||f/8||1/125||100||f/4||1/60||A||B||C");
  EXPECT_EQ(std::get<CameraReading>(parsed).cameraName, "A");
}

TEST(StatusReply, NothingIsTrimmed) {
  EXPECT_EQ(parseStatusReply(" RAW"), StatusReply(NoReading{" RAW"}));
  auto const parsed = parseStatusReply(" RAW||400 || f/8||1/125");
  EXPECT_EQ(std::get<CameraReading>(parsed).format, " RAW");
  EXPECT_EQ(std::get<CameraReading>(parsed).iso, "400 ");
}

TEST(StatusReply, StatusWordsStandForThemselves) {
  for (auto const word : {"CAMERA_OFF", "NO_CAMERA", "NO_DOCUMENT", "ERROR"}) {
    EXPECT_EQ(parseStatusReply(word), StatusReply(NoReading{word}));
  }
}

TEST(StatusReply, ThreeBarsAreASeparatorAndTheBeginningOfTheNextField) {
  auto const parsed = parseStatusReply("a|||b||c||d");
  EXPECT_EQ(std::get<CameraReading>(parsed).iso, "|b");
}

}  // namespace
}  // namespace morla::camerawatch
