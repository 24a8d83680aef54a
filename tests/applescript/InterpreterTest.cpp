#include "applescript/Interpreter.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

#include "ToyApplication.h"

namespace morla::applescript::test {
namespace {

[[nodiscard]] std::string repeated(std::string_view text, std::size_t times) {
  std::string result;
  for (std::size_t i = 0; i < times; ++i) result += text;
  return result;
}

class Interpreter : public testing::Test {
 protected:
  ScriptOutcome runText(std::string const& source, Limits const& limits = {}) {
    return run(source, host_, delimiters_, limits);
  }
  std::int64_t errorOf(std::string const& source, Limits const& limits = {}) {
    ScriptOutcome const outcome = runText(source, limits);
    return outcome.failure ? outcome.failure->number : 0;
  }

  ToyHost host_;
  TextItemDelimiters delimiters_{""};
};

TEST_F(Interpreter, SurvivesDeepNestingOfEveryBracket) {
  // Enough to run out of stack ten times over, were there no limit.
  constexpr std::size_t kMany = 20'000;
  struct Row {
    char const* label;
    std::string source;
  };
  std::vector<Row> const rows{
      {"parentheses", repeated("(", 100'000) + "1" + repeated(")", 100'000)},
      {"open parentheses", repeated("(", kMany)},
      {"lists", repeated("{", kMany) + repeated("}", kMany)},
      {"records", repeated("{a:", kMany) + "1" + repeated("}", kMany)},
      {"not", repeated("not ", kMany) + "true"},
      {"minus", repeated("- ", kMany) + "1"},
      {"powers", repeated("2 ^ ", kMany) + "1"},
      {"of", repeated("name of ", kMany) + "x"},
      {"possessives", "x" + repeated("'s name", kMany)},
      {"coercions", "x" + repeated(" as text", kMany)},
      {"tells", repeated("tell x\n", kMany)},
      {"one-line tells", repeated("tell x to ", kMany) + "y"},
      {"ifs", repeated("if true then\n", kMany)},
      {"one-line ifs", repeated("if true then ", kMany) + "1"},
      {"references", repeated("a reference to ", kMany) + "x"},
      {"calls", repeated("f(", kMany)},
      {"articles", repeated("the ", kMany) + "x"},
      {"gets", repeated("get ", kMany) + "x"},
      {"every", repeated("every item of ", kMany) + "x"},
      {"filters", repeated("every item whose ", kMany) + "x"},
      {"selectors", "item " + repeated("-", 1) + repeated("(item ", kMany)},
      {"commands", repeated("do shell script ", kMany) + "x"},
      {"counts", repeated("count ", kMany) + "x"},
      {"script objects", repeated("script\n", kMany)},
      {"continues", repeated("continue f(", kMany)},
      {"interleaved calls", repeated("f:", kMany)},
      {"run scripts", repeated("run script ", kMany) + "x"},
      {"places", "get " + repeated("end of ", kMany) + "x"},
  };
  for (Row const& row : rows) {
    std::optional<ScriptFailure> const failure = check(row.source, host_);
    ASSERT_TRUE(failure) << row.label;
    EXPECT_EQ(failure->number, -2706) << row.label << ": " << failure->message;
  }
}

TEST_F(Interpreter, LooksAtManySelectorWordsOneByOne) {
  EXPECT_EQ(errorOf("application" + repeated(" id", 20'000)), -2741);
}

TEST_F(Interpreter, TakesLongChainsThatAreNotDeep) {
  ScriptOutcome const sum = runText("0" + repeated(" + 1", 5000));
  ASSERT_TRUE(sum.result) << sum.failure->message;
  EXPECT_EQ(*sum.result, Value(std::int64_t{5000}));
  EXPECT_EQ(errorOf("if false then\n" + repeated("else if false then\n", 5000) + "end if"), 0);
}

TEST_F(Interpreter, EndsAScriptThatTakesTooManySteps) {
  Limits limits;
  limits.steps = 1000;
  EXPECT_EQ(errorOf("repeat\nend repeat", limits), -2707);
  EXPECT_EQ(errorOf("repeat\ntry\nrepeat\nend repeat\nend try\nend repeat", limits), -2707)
      << "no try goes on after it";
}

TEST_F(Interpreter, BoundsTheSizeOfTextsAndLists) {
  Limits limits;
  limits.textBytes = 1000;
  limits.listItems = 100;
  EXPECT_EQ(errorOf("set t to \"ab\"\nrepeat\nset t to t & t\nend repeat", limits), -2708);
  EXPECT_EQ(errorOf("set l to {}\nrepeat\nset end of l to 1\nend repeat", limits), -2708);
  EXPECT_EQ(errorOf("set l to {1}\nrepeat\nset l to l & l\nend repeat", limits), -2708);
}

TEST_F(Interpreter, BoundsTheFilesThatItReadsAndWrites) {
  Limits limits;
  limits.textBytes = 100;
  host_.disk.contents = {{"/a", std::string(200, 'x')}};
  EXPECT_EQ(errorOf("read POSIX file \"/a\"", limits), -2708);
  EXPECT_EQ(errorOf("set eof of POSIX file \"/a\" to 1000", limits), -2708);
  EXPECT_EQ(errorOf("write \"x\" to POSIX file \"/a\" starting at 1000", limits), -2708);
  EXPECT_EQ(errorOf("repeat 200 times\nopen for access POSIX file \"/a\"\nend repeat"), -42);
  EXPECT_EQ(errorOf("read POSIX file \"/a\" for 50", limits), 0);
}

TEST_F(Interpreter, BoundsTheScriptsThatAScriptCompiles) {
  Limits limits;
  limits.textBytes = 100;
  EXPECT_EQ(errorOf("repeat 50 times\nrun script \"1 + 1\"\nend repeat", limits), -2708);
}

TEST_F(Interpreter, TouchesNoFileOfAHostThatHasNone) {
  host_.disk.contents = {{"/a", "x"}};
  host_.hasFiles = false;
  for (char const* const command :
       {"read POSIX file \"/a\"", "open for access POSIX file \"/a\"", "write \"x\" to POSIX file \"/a\"",
        "get eof POSIX file \"/a\"", "set eof POSIX file \"/a\" to 0", "info for POSIX file \"/a\"",
        "list folder POSIX file \"/\"", "load script POSIX file \"/a\"", "run script POSIX file \"/a\""}) {
    EXPECT_EQ(errorOf(command), -10004) << command;
  }
}

TEST_F(Interpreter, BoundsWhatAllValuesHoldTogether) {
  Limits limits;
  limits.memoryBytes = 1'000'000;
  EXPECT_EQ(errorOf("set l to {}\nrepeat\nset end of l to \"0123456789\" & (count l)\nend repeat", limits), -108);
  EXPECT_EQ(errorOf("set l to {}\nrepeat\ntry\nset l to {l, {1, 2, 3}}\nend try\nend repeat", limits), -108)
      << "no try goes on after it";
  EXPECT_EQ(errorOf("repeat 20000 times\nset x to {1, 2, 3, 4, 5, 6, 7, 8}\nset y to \"a\" & x\nend repeat", limits), 0)
      << "what nothing holds any more does not count";
}

TEST_F(Interpreter, BoundsTheStackThatItTakes) {
  std::string const source = "on f(n)\nreturn 1 + (f(n + 1))\nend f\nf(1)";
  EXPECT_EQ(errorOf(source), -2706);
  Limits limits;
  limits.stackBytes = 100'000;
  EXPECT_EQ(errorOf(source, limits), -2706);
  EXPECT_EQ(errorOf("try\nf(1)\nend try\n" + source, limits), -2706);
}

TEST_F(Interpreter, LetsHandlersCallThemselvesTwoHundredTimes) {
  ScriptOutcome const outcome =
      runText("on f(n)\nif n = 0 then\nreturn 0\nelse\nreturn 1 + (f(n - 1))\nend if\nend f\nf(200)");
  ASSERT_TRUE(outcome.result) << outcome.failure->message;
  EXPECT_EQ(*outcome.result, Value(std::int64_t{200}));
}

TEST_F(Interpreter, HandsArgumentsToTheRunHandler) {
  ScriptOutcome const list = run("on run argv\nreturn (count argv) & item 2 of argv as text\nend run", host_,
                                 delimiters_, {}, {{"a", "b c"}, true});
  ASSERT_TRUE(list.result) << list.failure->message;
  EXPECT_EQ(*list.result, Value("2b c"));
  EXPECT_EQ(list.source, "\"2b c\"");
  ScriptOutcome const pattern = run("on run {x, y}\nreturn y\nend run", host_, delimiters_, {}, {{"a", "b"}});
  ASSERT_TRUE(pattern.result);
  EXPECT_EQ(*pattern.result, Value("b"));
}

TEST_F(Interpreter, WritesTheResultAsAScriptWould) {
  auto const garden = makeGarden();
  host_.applications = {garden.get()};
  struct Row {
    char const* source;
    char const* expected;
  };
  Row const rows[] = {
      {"{1, 2.0, \"a\\\"b\", missing value, true}", "{1, 2.0, \"a\\\"b\", missing value, true}"},
      {"{a:1, name:\"x\"}", "{a:1, name:\"x\"}"},
      {"tell application \"Garden\" to main colour of plant 1 of bed 1", "red"},
      {"{|a b|:1, c_1:2, |3|:3}", "{|a b|:1, c_1:2, |3|:3}"},
      {"script s\nend script\ns", "«script s»"},
      {"date \"2020-01-01\"", "date \"Wednesday, January 1, 2020 at 12:00:00 AM\""},
  };
  for (Row const& row : rows) {
    ScriptOutcome const outcome = run(row.source, host_, delimiters_, {}, {{}, true});
    EXPECT_EQ(outcome.source, row.expected) << row.source;
  }
}

TEST_F(Interpreter, RefusesASourceThatIsTooLarge) {
  Limits limits;
  limits.sourceBytes = 10;
  EXPECT_EQ(errorOf("return 1 --", limits), -2708);
  EXPECT_EQ(errorOf("return 1  ", limits), 0);
}

TEST_F(Interpreter, SurvivesAValueThatHoldsItself) {
  EXPECT_EQ(errorOf("set l to {}\nset end of l to l\nreturn l as text"), -2706);
  EXPECT_EQ(errorOf("set l to {}\nset end of l to l\nset m to {}\nset end of m to m\nreturn l is m"), -2706);
  EXPECT_EQ(errorOf("set l to {}\nset end of l to l\nreturn l"), -2706);
  EXPECT_EQ(errorOf("set l to {1}\nset item 1 of l to l\nreturn l as integer"), -1700);
}

TEST_F(Interpreter, SurvivesTheEndOfAVeryDeepValue) {
  EXPECT_EQ(errorOf("set l to {}\nrepeat 60000 times\nset l to {l}\nend repeat\nset l to 0"), 0);
}

TEST_F(Interpreter, AppendsInLinearTime) {
  // Copying the whole each time would move 18 gigabytes.
  Limits limits;
  limits.steps = 4'000'000;
  ScriptOutcome const text =
      runText("set t to \"\"\nrepeat 60000 times\nset t to t & \"0123456789\"\nend repeat\nreturn length of t", limits);
  ASSERT_TRUE(text.result) << text.failure->message;
  EXPECT_EQ(*text.result, Value(std::int64_t{600'000}));
  ScriptOutcome const list =
      runText("set l to {}\nrepeat 60000 times\nset end of l to 1\nend repeat\nreturn count of l", limits);
  ASSERT_TRUE(list.result) << list.failure->message;
  EXPECT_EQ(*list.result, Value(std::int64_t{60'000}));
  ScriptOutcome const joined =
      runText("set l to {}\nrepeat 60000 times\nset l to l & 1\nend repeat\nreturn count of l", limits);
  ASSERT_TRUE(joined.result) << joined.failure->message;
  EXPECT_EQ(*joined.result, Value(std::int64_t{60'000}));
}

TEST_F(Interpreter, KeepsTextsApartThatBeganAsOne) {
  ScriptOutcome const outcome =
      runText("set a to \"x\"\nset b to a & \"1\"\nset c to a & \"2\"\nset d to b & b\nreturn a & b & c & d");
  ASSERT_TRUE(outcome.result);
  EXPECT_EQ(*outcome.result, Value("xx1x2x1x1"));
}

TEST_F(Interpreter, HandsTheDelimitersBackAfterSuccessAndAfterAnError) {
  ASSERT_EQ(errorOf("set AppleScript's text item delimiters to {\"a\", \"b\"}"), 0);
  EXPECT_EQ(delimiters_, (TextItemDelimiters{"a", "b"}));
  ASSERT_EQ(errorOf("set AppleScript's text item delimiters to \":\"\nerror number 5"), 5);
  EXPECT_EQ(delimiters_, TextItemDelimiters{":"});
  ScriptOutcome const outcome = runText("return {1, 2} as text");
  EXPECT_EQ(*outcome.result, Value("1:2"));
}

TEST_F(Interpreter, SaysWhereAScriptFailed) {
  std::string const source = "set x to 1\nset y to x + missingOne";
  ScriptOutcome const outcome = runText(source);
  ASSERT_TRUE(outcome.failure);
  EXPECT_EQ(source.substr(outcome.failure->range.start, outcome.failure->range.length), "missingOne");
  std::string const wrong = "set x to 1\nset y to x z";
  std::optional<ScriptFailure> const failure = check(wrong, host_);
  ASSERT_TRUE(failure);
  EXPECT_EQ(wrong.substr(failure->range.start, failure->range.length), "z");
}

TEST_F(Interpreter, ChecksWithoutRunning) {
  EXPECT_FALSE(check("do shell script \"x\"", host_));
  EXPECT_TRUE(host_.commands.empty());
}

TEST_F(Interpreter, NeverCrashesOnABeginningOfAScript) {
  auto const garden = makeGarden();
  host_.applications = {garden.get()};
  std::string const script =
      "property p : {a:1, name:\"b\"}\non f(x, {y, z})\nreturn x's length\nend f\n"
      "tell application \"Garden\"\nset r to every plant of bed 1 whose height > 3 and not (name is \"x\")\n"
      "repeat with i from 1 to -2 by -1\ntry\nset item i thru 2 of text items of \"a\" to name of last plant of r\n"
      "on error m number n from o to t partial result q\nif m contains \"x\" then exit repeat\n"
      "end try\nend repeat\nwith timeout of 5 seconds\nmake new plant at end of bed 1 with properties {name:\"y\"}\n"
      "water r amount 3 with gently\nend timeout\nconsidering case but ignoring white space\nend considering\n"
      "end tell\nmy f(1, {2, 3}) as text & (POSIX file \"/x\")\n";
  for (std::size_t length = 0; length <= script.size(); ++length) {
    std::string const beginning = script.substr(0, length);
    std::optional<ScriptFailure> const failure = check(beginning, host_);
    if (failure) {
      EXPECT_LE(failure->range.start + failure->range.length, length);
    }
  }
}

TEST_F(Interpreter, AnswersAnyOrderOfWordsWithAValueOrAnError) {
  auto const garden = makeGarden();
  host_.applications = {garden.get()};
  static constexpr auto kWords = std::to_array<std::string_view>({"set",         "x",
                                                                  "to",          "of",
                                                                  "item",        "1",
                                                                  "-1",          "\"a\"",
                                                                  "(",           ")",
                                                                  "{",           "}",
                                                                  ",",           "\n",
                                                                  "\n",          "tell",
                                                                  "end",         "if",
                                                                  "then",        "else",
                                                                  "repeat",      "with",
                                                                  "in",          "from",
                                                                  "every",       "plant",
                                                                  "name",        "whose",
                                                                  "is",          "not",
                                                                  "and",         "&",
                                                                  "+",           "as",
                                                                  "text",        "list",
                                                                  "count",       "make",
                                                                  "new",         "at",
                                                                  "bed",         "delete",
                                                                  "exists",      "it",
                                                                  "me",          "my",
                                                                  "the",         "'s",
                                                                  "first",       "last",
                                                                  "thru",        "try",
                                                                  "on",          "error",
                                                                  "number",      "return",
                                                                  "height",      "water",
                                                                  "id",          "get",
                                                                  "copy",        "f",
                                                                  "contents",    "a reference to",
                                                                  "result",      "length",
                                                                  "reverse",     "text items",
                                                                  "exit repeat", "tell application \"Garden\"\n",
                                                                  "end tell\n",  "set x to {1, \"a\", {2}}\n",
                                                                  "on f(x)\n",   "end f\n",
                                                                  "script s\n",  "end script\n",
                                                                  "continue",    "given",
                                                                  "date",        "property p : 1\n",
                                                                  "a:1",         "word",
                                                                  "text",        "round",
                                                                  "whose it"});
  Limits limits;
  limits.steps = 5'000;
  std::mt19937 random(20261);  // NOLINT(cert-msc51-cpp): the same scripts each time
  std::uniform_int_distribution<std::size_t> which(0, kWords.size() - 1);
  std::uniform_int_distribution<std::size_t> howMany(1, 14);
  std::size_t compiled = 0;
  for (int i = 0; i < 20'000; ++i) {
    std::string source = i % 2 == 0 ? "" : "set x to {1, 2}\ntell application \"Garden\" to set y to ";
    for (std::size_t n = howMany(random); n > 0; --n) source += std::string(kWords[which(random)]) + " ";
    ScriptOutcome const outcome = runText(source, limits);
    ASSERT_FALSE(outcome.result && outcome.failure) << source;
    if (outcome.failure) {
      ASSERT_NE(outcome.failure->number, 0) << source;
      ASSERT_FALSE(outcome.failure->message.empty()) << source;
      ASSERT_LE(outcome.failure->range.start + outcome.failure->range.length, source.size()) << source;
    }
    if (!outcome.failure || outcome.failure->number > -2740) ++compiled;
  }
  EXPECT_GT(compiled, 500U) << "the words must make scripts often enough";
}

TEST_F(Interpreter, GivesTheValueOfADescriptorAsText) {
  struct Row {
    char const* label;
    Value value;
    std::optional<std::string> expected;
  };
  std::vector<Row> const rows{
      {"text", "a", "a"},
      {"integer", std::int64_t{-5}, "-5"},
      {"real", 1.5, "1.5"},
      {"boolean", true, "true"},
      {"missing value", Value::missing(), "msng"},
      {"enumerator", Enumerator{"Rjpg"_code}, "Rjpg"},
      {"file", FileUrl{"/a"}, "/a"},
      {"alias", Alias{"/a/"}, "/a/"},
      {"list of one", List{"a"}, std::nullopt},
      {"record", Record{}, std::nullopt},
      {"specifier", std::make_shared<Specifier const>(), std::nullopt},
      {"null", Value(), std::nullopt},
  };
  for (Row const& row : rows) EXPECT_EQ(stringValue(row.value), row.expected) << row.label;
}

}  // namespace
}  // namespace morla::applescript::test
