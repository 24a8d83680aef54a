#include "base/Json.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>

namespace morla {
namespace {

constexpr auto kInfinity = std::numeric_limits<double>::infinity();

TEST(Json, WritesScalars) {
  EXPECT_EQ(Json().text(), "null");
  EXPECT_EQ(Json(true).text(), "true");
  EXPECT_EQ(Json(false).text(), "false");
  EXPECT_EQ(Json(-7).text(), "-7");
  EXPECT_EQ(Json(std::numeric_limits<std::int64_t>::min()).text(), "-9223372036854775808");
  EXPECT_EQ(Json(std::numeric_limits<std::int64_t>::max()).text(), "9223372036854775807");
  EXPECT_EQ(Json("text").text(), "\"text\"");
  EXPECT_EQ(Json(std::string("text")).text(), "\"text\"");
  EXPECT_EQ(Json(std::string_view("text")).text(), "\"text\"");
}

TEST(Json, WritesTheShortestNumberThatReadsBackTheSame) {
  EXPECT_EQ(Json(0.1).text(), "0.1");
  EXPECT_EQ(Json(120.0).text(), "120");
  EXPECT_EQ(Json(-2.5).text(), "-2.5");
  for (double const value : {1.0 / 3, 1e300, 5e-324, -1.7976931348623157e308, 1e21, 123456789.125}) {
    EXPECT_EQ(nlohmann::json::parse(Json(value).text()).get<double>(), value);
  }
}

TEST(Json, WritesANumberThatIsNotFiniteAsNull) {
  EXPECT_EQ(Json(kInfinity).text(), "null");
  EXPECT_EQ(Json(-kInfinity).text(), "null");
  EXPECT_EQ(Json(std::numeric_limits<double>::quiet_NaN()).text(), "null");
  EXPECT_EQ(Json(std::vector<double>{1, kInfinity, 2}).text(), "[1,null,2]");
}

TEST(Json, WritesAnAbsentValueAsNull) {
  EXPECT_EQ(Json(std::optional<std::string>()).text(), "null");
  EXPECT_EQ(Json(std::optional<std::string>("ISO")).text(), "\"ISO\"");
  EXPECT_EQ(Json(std::optional<bool>(false)).text(), "false");
}

TEST(Json, WritesListsAndObjects) {
  EXPECT_EQ(Json(std::vector<int>{}).text(), "[]");
  EXPECT_EQ(Json(std::vector<std::string>{"a", "b\""}).text(), R"(["a","b\""])");
  EXPECT_EQ(Json(std::vector<bool>{true, false}).text(), "[true,false]");
  EXPECT_EQ(Json(std::vector<std::vector<int>>{{1}, {}, {2, 3}}).text(), "[[1],[],[2,3]]");
  EXPECT_EQ(Json(std::map<std::string, Json>{}).text(), "{}");
  EXPECT_EQ(Json(std::map<std::string, Json>{{"b\n", Json(1)}, {"a", Json(std::vector<int>{1, 2})}}).text(),
            R"({"a":[1,2],"b\n":1})");
}

struct QuotingRow {
  char const* label;
  std::string text;
  std::string json;
};

TEST(Json, QuotesText) {
  std::vector<QuotingRow> const rows{
      {"empty", "", R"("")"},
      {"quotation mark and backslash", R"(a"b\c)", R"("a\"b\\c")"},
      {"slash", "a/b", R"("a/b")"},
      {"line ends and tab", "a\nb\rc\td", R"("a\nb\rc\td")"},
      {"zero byte", std::string("a\0b", 3), R"("a\u0000b")"},
      {"other controls", "\x01\x1F\x7F", R"("\u0001\u001f\u007f")"},
      {"well-formed UTF-8", "é 東 🎞", R"("é 東 🎞")"},
      {"first and last of each length", "\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",
       "\"\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF\""},
      {"stray byte",
       "a\xFF"
       "b",
       "\"a\uFFFDb\""},
      {"cut short", "a\xE2\x82", "\"a\uFFFD\uFFFD\""},
      {"cut short before a quotation mark", "\xC3\"", "\"\uFFFD\\\"\""},
      {"overlong slash", "\xC0\xAF", "\"\uFFFD\uFFFD\""},
      {"surrogate", "\xED\xA0\x80", "\"\uFFFD\uFFFD\uFFFD\""},
      {"beyond the last code point", "\xF4\x90\x80\x80", "\"\uFFFD\uFFFD\uFFFD\uFFFD\""},
  };
  for (auto const& row : rows) EXPECT_EQ(Json(row.text).text(), row.json) << row.label;
}

TEST(Json, CanBeParsedWhateverTheBytes) {
  std::mt19937 source(1);
  for (int i = 0; i < 5000; ++i) {
    std::string bytes;
    for (auto length = source() % 12; length > 0; --length) bytes += static_cast<char>(source() % 256);
    auto const parsed = nlohmann::json::parse(Json(bytes).text(), nullptr, false);
    ASSERT_TRUE(parsed.is_string()) << testing::PrintToString(bytes);
  }
}

TEST(Json, ReadsBackAsTheTextThatItWasWhenThatIsWellFormed) {
  std::string const text = "\"é\"\\\n\r\t\x01\x7F/ 東 🎞 {}[]";
  EXPECT_EQ(nlohmann::json::parse(Json(text).text()).get<std::string>(), text);
}

}  // namespace
}  // namespace morla
