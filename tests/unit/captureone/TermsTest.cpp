#include "captureone/scripting/Terms.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

#include "captureone/EmbeddedDictionary.h"
#include "captureone/scripting/Conversion.h"

namespace morla::captureone {
namespace {

using applescript::Code;
using applescript::Enumerator;
using applescript::List;
using applescript::Value;

Terms parsed(std::string_view table) {
  auto result = applescript::parseDictionary(table);
  EXPECT_EQ(result.problem, "");
  return Terms(result.dictionary.value_or(applescript::Dictionary{}));
}

TEST(EmbeddedDictionary, IsAValidTable) {
  EXPECT_EQ(applescript::parseDictionary(kDictionary).problem, "");
}

TEST(EmbeddedDictionary, GivesEveryPropertyOfAClassACodeOfItsOwn) {
  auto const terms = parsed(kDictionary);
  std::set<std::tuple<std::string, Code>> seen;
  for (auto const& each : terms.dictionary().properties) {
    EXPECT_TRUE(seen.emplace(each.ownerClass, each.code).second) << each.ownerClass << ": " << each.name;
  }
}

TEST(EmbeddedDictionary, NamesNoTypeThatNothingDefines) {
  auto const terms = parsed(kDictionary);
  std::set<std::string> const basic{"text", "integer", "number", "boolean", "file", "any", "specifier"};
  for (auto const& each : terms.dictionary().properties) {
    EXPECT_TRUE(basic.contains(each.type) || terms.findClass(each.type) != nullptr || terms.isEnumeration(each.type))
        << each.ownerClass << ": " << each.name << " is " << each.type;
  }
}

TEST(Terms, FindsPropertiesAndElementsOfAncestors) {
  auto const terms = parsed(
      "class\tbase\tbbbb\n"
      "class\tpart\tpppp\n"
      "class\tchild\tcccc\tchildren\tbase\n"
      "property\tbase\tname\tpnam\ttext\tr\n"
      "element\tbase\tpart\n");
  ASSERT_NE(terms.findProperty(Code("cccc"), Code("pnam")), nullptr);
  EXPECT_EQ(terms.findProperty(Code("pppp"), Code("pnam")), nullptr);
  EXPECT_TRUE(terms.hasElements(Code("cccc"), Code("pppp")));
  EXPECT_FALSE(terms.hasElements(Code("pppp"), Code("cccc")));
  EXPECT_FALSE(terms.hasElements(Code("none"), Code("pppp")));
}

TEST(Terms, SearchEndsWhenClassesInheritInACircle) {
  auto const terms = parsed(
      "class\ta\taaaa\tas\tb\n"
      "class\tb\tbbbb\tbs\ta\n");
  EXPECT_EQ(terms.findProperty(Code("aaaa"), Code("pnam")), nullptr);
}

TEST(Conversion, FollowsTheTypeOfTheProperty) {
  auto const terms = parsed(kDictionary);
  auto const integer = [](std::int64_t n) { return Value(n); };
  struct Row {
    char const* type;
    Value value;
    std::optional<Value> expected;
  };
  Row const rows[] = {
      {"text", "a", Value("a")},
      {"text", integer(-7), Value("-7")},
      {"text", 2.5, Value("2.5")},
      {"text", true, Value("true")},
      {"text", Value::missing(), {}},
      {"text", List{}, {}},
      {"text", Value(), {}},
      {"text", Enumerator{Code("COsd")}, {}},
      {"boolean", false, Value(false)},
      {"boolean", "true", {}},
      {"boolean", integer(1), {}},
      {"integer", integer(3), integer(3)},
      {"integer", 2.6, integer(3)},
      {"integer", "12", integer(12)},
      {"integer", "12x", {}},
      {"integer", 1e300, {}},
      {"number", integer(3), Value(3.0)},
      {"number", "0.5", Value(0.5)},
      {"number", "nan", {}},
      {"number", "", {}},
      {"file", "Macintosh HD:a", Value("Macintosh HD:a")},
      {"file", applescript::FileUrl{"/a"}, Value(applescript::FileUrl{"/a"})},
      {"file", integer(1), {}},
      {"any", List{Value("x")}, Value(List{Value("x")})},
      {"documentType", Enumerator{Code("COsd")}, Value(Enumerator{Code("COsd")})},
      {"documentType", Enumerator{Code("Rjpg")}, {}},
      {"documentType", "session", {}},
      {"no such type", "a", {}},
  };
  int line = 0;
  for (auto const& row : rows) {
    EXPECT_EQ(convertTo(row.type, row.value, terms), row.expected) << "row " << line << ": " << row.type;
    ++line;
  }
}

}  // namespace
}  // namespace morla::captureone
