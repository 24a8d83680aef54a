#include "applescript/Dictionary.h"

#include <gtest/gtest.h>

namespace morla::applescript {
namespace {

TEST(Dictionary, ReadsEveryKindOfTerm) {
  DictionaryOrProblem const parsed = parseDictionary(
      "# a comment\n"
      "\n"
      "class\tkeyword library\tkwlb\tkeyword libraries\titem\r\n"
      "class\titem\tcobj\n"
      "property\tapplication\tJPEG quality\tCRjq\tinteger\trw\n"
      "property\titem\tname\tpnam\ttext\tr\n"
      "element\tapplication\tkeyword library\n"
      "command\tprocess\tCaptproc\tany\ttext\n"
      "parameter\tprocess\trecipe\tPrec\ttext\toptional\n"
      "enumerator\troot type\tcustom location\tCRcu\n");
  ASSERT_TRUE(parsed.dictionary) << parsed.problem;
  Dictionary const& dictionary = *parsed.dictionary;
  EXPECT_EQ(dictionary.classes[0].plural, "keyword libraries");
  EXPECT_EQ(dictionary.classes[0].inherits, "item");
  EXPECT_EQ(dictionary.classes[1].plural, "items");
  EXPECT_EQ(dictionary.properties[0].name, "JPEG quality");
  EXPECT_TRUE(dictionary.properties[0].isWritable);
  EXPECT_FALSE(dictionary.properties[1].isWritable);
  EXPECT_TRUE(dictionary.properties[1].isReadable);
  EXPECT_EQ(dictionary.elements[0].elementClass, "keyword library");
  EXPECT_EQ(dictionary.commands[0].eventClass, "Capt"_code);
  EXPECT_EQ(dictionary.commands[0].eventId, "proc"_code);
  EXPECT_TRUE(dictionary.parameters[0].isOptional);
  EXPECT_EQ(dictionary.enumerators[0].code, "CRcu"_code);
}

struct Row {
  char const* label;
  char const* table;
  char const* problem;
};

class DictionaryProblem : public testing::TestWithParam<Row> {};

TEST_P(DictionaryProblem, NamesTheFirstWrongLine) {
  DictionaryOrProblem const parsed = parseDictionary(GetParam().table);
  EXPECT_FALSE(parsed.dictionary);
  EXPECT_EQ(parsed.problem, GetParam().problem);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DictionaryProblem,
    testing::Values(Row{"UnknownKind", "klass\tx\tabcd\n", "line 1: unknown kind of term “klass”"},
                    Row{"ShortCode", "\nclass\tx\tabc\n", "line 2: a code has 4 characters"},
                    Row{"ShortEventCode", "command\tx\tabcd\n", "line 1: a code has 8 characters"},
                    Row{"MissingColumns", "class\tx\n", "line 1: wrong number of columns"},
                    Row{"TooManyColumns", "class\tx\tabcd\txs\ty\tz\n", "line 1: wrong number of columns"},
                    Row{"EmptyName", "class\t\tabcd\n", "line 1: no name"},
                    Row{"TwoBlanksInAName", "class\ta  b\tabcd\n", "line 1: no name"},
                    Row{"UnknownAccess", "property\tapplication\tx\tabcd\ttext\tread\n",
                        "line 1: access is r, w or rw"},
                    Row{"UnknownClass", "class\ta\tabcd\nproperty\tb\tx\tabcd\ttext\tr\n", "line 2: no class “b”"},
                    Row{"UnknownCommand", "parameter\tgo\tx\tabcd\ttext\n", "line 1: no command “go”"},
                    Row{"WordForOptional", "command\tgo\tabcdefgh\nparameter\tgo\tx\tabcd\ttext\tmaybe\n",
                        "line 2: the last column is “optional” or absent"}),
    [](testing::TestParamInfo<Row> const& row) { return std::string(row.param.label); });

}  // namespace
}  // namespace morla::applescript
