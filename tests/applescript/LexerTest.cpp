#include "applescript/Lexer.h"

#include <gtest/gtest.h>

namespace morla::applescript {
namespace {

/// Kinds and texts in one line: "name:set integer:5 end:".
[[nodiscard]] std::string summary(std::string_view source) {
  std::string result;
  for (Word const& word : lex(source)) {
    std::string kind;
    switch (word.kind) {
      case WordKind::name:
        kind = "name";
        break;
      case WordKind::pipedName:
        kind = "piped";
        break;
      case WordKind::chevron:
        kind = "chevron";
        break;
      case WordKind::integer:
        kind = "integer";
        break;
      case WordKind::real:
        kind = "real";
        break;
      case WordKind::ordinal:
        kind = "ordinal";
        break;
      case WordKind::text:
        kind = "text";
        break;
      case WordKind::symbol:
        kind = "symbol";
        break;
      case WordKind::lineEnd:
        kind = "line";
        break;
      case WordKind::end:
        kind = "end";
        break;
      case WordKind::error:
        kind = "error";
        break;
    }
    if (!result.empty()) result += ' ';
    result += kind + ":" + word.text;
  }
  return result;
}

struct Row {
  char const* label;
  char const* source;
  char const* expected;
};

class LexerTable : public testing::TestWithParam<Row> {};

TEST_P(LexerTable, SplitsTheSourceIntoWords) {
  EXPECT_EQ(summary(GetParam().source), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, LexerTable,
    testing::Values(Row{"Nothing", "", "end:"}, Row{"Blanks", " \t\xC2\xA0 ", "end:"},
                    Row{"ByteOrderMark",
                        "\xEF\xBB\xBF"
                        "a",
                        "name:a end:"},
                    Row{"NamesKeepTheirCase", "Set fName_2", "name:Set name:fName_2 end:"},
                    Row{"Numbers", "1 2.5 1.0E+4 3e2 1.",
                        "integer:1 real:2.5 real:1.0E+4 real:3e2 integer:1 error:unknown token end:"},
                    Row{"OneLineEndEach", "a\rb\nc\r\nd", "name:a line: name:b line: name:c line: name:d end:"},
                    Row{"DashComment", "a -- b\nc", "name:a line: name:c end:"},
                    Row{"HashComment", "a # b (*\nc", "name:a line: name:c end:"},
                    Row{"NestedComment", "a (* b (* c *) d *) e", "name:a name:e end:"},
                    Row{"OpenComment", "a (* b (* c *)", "name:a error:end of script end:"},
                    Row{"Continuation", "a ¬\n b", "name:a name:b end:"},
                    Row{"ContinuationWithComment", "a ¬ -- why\r\n b", "name:a name:b end:"},
                    Row{"ContinuationInTheLine", "a ¬ b", "name:a error:unknown token name:b end:"},
                    Row{"Escapes", R"("\"\\\n\r\t")", "text:\"\\\n\r\t end:"},
                    Row{"UnknownEscape", R"("a\qb" c)", "error:unknown token name:c end:"},
                    Row{"CommentInText", "\"-- (* \"", "text:-- (*  end:"},
                    Row{"LineEndInText", "\"a\nb\"", "text:a\nb end:"},
                    Row{"OpenText", "\"abc", "error:end of script end:"},
                    Row{"OpenTextWithBackslash", "\"abc\\", "error:end of script end:"},
                    Row{"Piped", "|a b| |c", "piped:a b error:unknown token end:"},
                    Row{"Chevrons", "«class docu»", "chevron:class docu end:"},
                    Row{"Possessive", "x's y", "name:x symbol:'s name:y end:"},
                    Row{"LonelyApostrophe", "'start", "error:unknown token name:start end:"},
                    Row{"Symbols", "≤ <= ≠ /= ÷ & { } ( ) ^",
                        "symbol:<= symbol:<= symbol:/= symbol:/= symbol:/ symbol:& symbol:{ symbol:} symbol:( symbol:) "
                        "symbol:^ end:"},
                    Row{"ForeignLetter", "é", "error:unknown token end:"},
                    Row{"StrayByte", "\xFF", "error:unknown token end:"}),
    [](testing::TestParamInfo<Row> const& row) { return std::string(row.param.label); });

TEST(Lexer, KnowsWhereEachWordStands) {
  std::vector<Word> const words = lex("set é to \"x\"");
  EXPECT_EQ(words[0].range.start, 0U);
  EXPECT_EQ(words[0].range.length, 3U);
  EXPECT_EQ(words[1].range.start, 4U);
  EXPECT_EQ(words[1].range.length, 2U) << "a character is not cut";
  EXPECT_EQ(words[3].range.start, 10U);
  EXPECT_EQ(words[3].range.length, 3U) << "quotation marks included";
}

TEST(Lexer, ReadsAContractionAsTwoWords) {
  EXPECT_EQ(summary("x isn't y"), "name:x name:is name:not name:y end:");
  EXPECT_EQ(summary("isn'ty"), summary("isn ").substr(0, 8) + " error:unknown token name:ty end:");
  std::vector<Word> const words = lex("doesn’t");
  EXPECT_EQ(words[0].range.start + words[0].range.length, words[1].range.start);
  EXPECT_EQ(words[1].range.start + words[1].range.length, std::string_view("doesn’t").size());
}

TEST(Lexer, ReadsOrdinalsWithFigures) {
  EXPECT_EQ(summary("2nd 21ST 3th 4thx"), "ordinal:2 ordinal:21 ordinal:3 integer:4 name:thx end:");
}

TEST(Lexer, EndsEveryBeginningOfAScriptWithAnEndWord) {
  std::string const script = "set |a| to \"b\\n\" & (* c *) «class x» ¬\n 1.5E+3 's -- é";
  for (std::size_t length = 0; length <= script.size(); ++length) {
    std::vector<Word> const words = lex(script.substr(0, length));
    ASSERT_FALSE(words.empty());
    EXPECT_EQ(words.back().kind, WordKind::end) << length;
  }
}

}  // namespace
}  // namespace morla::applescript
