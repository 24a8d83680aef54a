#include "platform/macos/nodes/DisplayText.h"

#include <gtest/gtest.h>

#include <string>

namespace morla::macos {
namespace {

TEST(DisplayText, LeavesTextAndItsLineBreaksAlone) {
  EXPECT_EQ(displayable("Réglages → Automatisation\n→ MORLA 📷"), "Réglages → Automatisation\n→ MORLA 📷");
  EXPECT_EQ(displayable(""), "");
}

TEST(DisplayText, ShowsControlCharactersAsNothing) {
  EXPECT_EQ(displayable(std::string("a\0b", 3)), "ab");
  EXPECT_EQ(displayable("a\tb\rc\x7F"
                        "d"),
            "abcd");
  EXPECT_EQ(displayable("a\xC2\x85"
                        "b"),
            "ab")
      << "U+0085";
  EXPECT_EQ(displayable("a\xC2\xA0"
                        "b"),
            "a\xC2\xA0"
            "b")
      << "a blank that does not break is none";
}

TEST(DisplayText, ShowsWhatIsNoUtf8AsReplacementCharacters) {
  EXPECT_EQ(displayable("f/8 \xFF"), "f/8 \xEF\xBF\xBD");
  EXPECT_EQ(displayable("\xE2\x82"), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
}  // namespace morla::macos
