#include <gtest/gtest.h>

#include <memory>

#include "platform/linux/scripting/tool/SourcePosition.h"
#include "platform/linux/scripting/tool/ToolArguments.h"
#include "platform/linux/scripting/tool/ValueText.h"

namespace morla::linux {
namespace {

using namespace applescript;

TEST(SourcePosition, CountsLinesOfEveryKindAndCodePoints) {
  struct Row {
    char const* source;
    std::size_t offset;
    SourcePosition position;
  };
  Row const rows[] = {
      {"", 0, {1, 1}},           {"abc", 2, {1, 3}},  {"abc", 99, {1, 4}},
      {"a\nb", 2, {2, 1}},       {"a\rb", 2, {2, 1}}, {"a\r\nb", 3, {2, 1}},
      {"a\r\n\r\nb", 5, {3, 1}}, {"é\"x", 3, {1, 3}}, {"a\n\nbc", 4, {3, 2}},
  };
  for (Row const& row : rows) {
    auto const position = positionIn(row.source, row.offset);
    EXPECT_EQ(position.line, row.position.line) << row.source << " " << row.offset;
    EXPECT_EQ(position.column, row.position.column) << row.source << " " << row.offset;
  }
}

TEST(ToolArguments, JoinTheLinesOfAScript) {
  auto const parsed = parseToolArguments({"-e", "set x to 1", "-s", "s", "-e", "-x"});
  ASSERT_TRUE(parsed.arguments) << parsed.problem;
  EXPECT_EQ(parsed.arguments->lines, (std::vector<std::string>{"set x to 1", "-x"}));
  EXPECT_EQ(parsed.arguments->form, ToolArguments::Form::source);
  EXPECT_EQ(parsed.arguments->action, ToolArguments::Action::run);
}

TEST(ToolArguments, NameAFileOrStandardInput) {
  EXPECT_EQ(parseToolArguments({}).arguments->file, "-");
  EXPECT_EQ(parseToolArguments({"-"}).arguments->file, "-");
  EXPECT_EQ(parseToolArguments({"a.applescript"}).arguments->file, "a.applescript");
  EXPECT_EQ(parseToolArguments({"--", "-e"}).arguments->file, "-e");
  auto const check = parseToolArguments({"--check", "a"});
  EXPECT_EQ(check.arguments->action, ToolArguments::Action::check);
  EXPECT_EQ(parseToolArguments({"--help"}).arguments->action, ToolArguments::Action::help);
}

TEST(ToolArguments, GiveTheScriptWhatFollowsIt) {
  auto const file = parseToolArguments({"-s", "s", "a", "b", "-e", "--", "c"});
  ASSERT_TRUE(file.arguments) << file.problem;
  EXPECT_EQ(file.arguments->file, "a");
  EXPECT_EQ(file.arguments->scriptArguments, (std::vector<std::string>{"b", "-e", "--", "c"}));
  auto const lines = parseToolArguments({"-e", "1", "a", "b"});
  ASSERT_TRUE(lines.arguments) << lines.problem;
  EXPECT_EQ(lines.arguments->scriptArguments, (std::vector<std::string>{"a", "b"}));
}

TEST(ToolArguments, SayWhatIsWrong) {
  struct Row {
    std::vector<std::string> words;
    char const* problem;
  };
  Row const rows[] = {
      {{"-x"}, "unknown option -x"}, {{"--chek"}, "unknown option --chek"},   {{"-e"}, "-e needs a value"},
      {{"-s"}, "-s needs a value"},  {{"-s", "e"}, "-s takes h or s, not e"},
  };
  for (Row const& row : rows) {
    auto const parsed = parseToolArguments(row.words);
    EXPECT_FALSE(parsed.arguments) << row.problem;
    EXPECT_EQ(parsed.problem, row.problem);
  }
}

Value object(Code wanted, KeyForm form, Value selector, Value container = {}) {
  return SpecifierPointer(
      std::make_shared<Specifier>(Specifier{wanted, form, std::move(selector), std::move(container)}));
}

TEST(ValueText, HasASourceFormAndAHumanForm) {
  Value const book = object("Book"_code, KeyForm::index, std::int64_t{1});
  struct Row {
    Value value;
    char const* source;
    char const* human;
  };
  Row const rows[] = {
      {{}, "null", "null"},
      {true, "true", "true"},
      {std::int64_t{-5}, "-5", "-5"},
      {2.5, "2.5", "2.5"},
      {"say \"a\\b\"", R"("say \"a\\b\"")", R"(say "a\b")"},
      {Value::missing(), "missing value", "missing value"},
      {TypeCode{"docu"_code}, "«class docu»", "«class docu»"},
      {Enumerator{"Rjpg"_code}, "«constant ****Rjpg»", "«constant ****Rjpg»"},
      {FileUrl{"/a b"}, "POSIX file \"/a b\"", "/a b"},
      {Alias{"/a/"}, "POSIX file \"/a/\" as alias", "/a/"},
      {List{}, "{}", ""},
      {List{"", "x", List{std::int64_t{1}, "y"}}, R"({"", "x", {1, "y"}})", ", x, 1, y"},
      {Record{{"pnam"_code, "x"}, {std::string("my_key"), true}, {std::string("a b"), std::int64_t{1}}},
       R"({«property pnam»:"x", my_key:true, |a b|:1})", R"(«property pnam»:"x", my_key:true, |a b|:1)"},
      {book, "«class Book» 1", "«class Book» 1"},
      {object("prop"_code, KeyForm::property, TypeCode{"pnam"_code}, book), "«property pnam» of «class Book» 1",
       "«property pnam» of «class Book» 1"},
      {object("Book"_code, KeyForm::name, "Light"), "«class Book» \"Light\"", "«class Book» \"Light\""},
      {object("Book"_code, KeyForm::id, "6"), "«class Book» id \"6\"", "«class Book» id \"6\""},
      {object("Book"_code, KeyForm::every, {}), "every «class Book»", "every «class Book»"},
      {object("Book"_code, KeyForm::relative, Enumerator{"prev"_code}, book), "«class Book» before «class Book» 1",
       "«class Book» before «class Book» 1"},
  };
  for (Row const& row : rows) {
    EXPECT_EQ(sourceForm(row.value), row.source);
    EXPECT_EQ(humanForm(row.value), row.human);
  }
}

}  // namespace
}  // namespace morla::linux
