#include "applescript/TermResolver.h"

#include <gtest/gtest.h>

namespace morla::applescript {
namespace {

[[nodiscard]] Terminology recipeTerms() {
  DictionaryOrProblem parsed = parseDictionary(
      "class\tcamera\tCObj\n"
      "property\tapplication\tcamera\tCOco\tcamera\tr\n"
      "property\tapplication\tpixels per inch\tCRrs\tnumber\trw\n"
      "property\tapplication\tJPEG quality\tCRjq\tinteger\trw\n"
      "property\tapplication\troot folder location\tCRrf\tfile\trw\n"
      "property\tapplication\troot folder type\tCRro\troot type\trw\n"
      "property\tapplication\tavailable ISO settings\tCCAi\ttext\tr\n"
      "enumerator\tunit\tpixels\tMUpx\n"
      "enumerator\tformat\tJPEG\tRjpg\n"
      "enumerator\troot type\tcustom location\tRrcu\n"
      "command\tend live view\tCaptendl\n");
  EXPECT_TRUE(parsed.dictionary) << parsed.problem;
  return Terminology(std::make_shared<Dictionary const>(*std::move(parsed.dictionary)));
}

struct Row {
  char const* label;
  char const* source;
  Resolution::Kind kind;
  std::size_t words;
};

class TermResolverTable : public testing::TestWithParam<Row> {};

TEST_P(TermResolverTable, TakesTheLongestSequenceOfTheLine) {
  Terminology const terms = recipeTerms();
  std::vector<Word> const words = lex(GetParam().source);
  TermResolver resolver(words);
  resolver.setApplicationTerms(&terms);
  Resolution const resolution = resolver.resolve(0);
  EXPECT_EQ(resolution.kind, GetParam().kind);
  EXPECT_EQ(resolution.words, GetParam().words);
}

using Kind = Resolution::Kind;
INSTANTIATE_TEST_SUITE_P(Rows, TermResolverTable,
                         testing::Values(Row{"ThreeWordsBeforeOne", "pixels per inch of r", Kind::term, 3},
                                         Row{"OneWhenTheRestIsMissing", "pixels per second", Kind::term, 1},
                                         Row{"CaseDoesNotCount", "Pixels", Kind::term, 1},
                                         Row{"NotAcrossALineEnd", "pixels per\ninch", Kind::term, 1},
                                         Row{"AcrossAContinuation", "pixels per ¬\ninch", Kind::term, 3},
                                         Row{"SharedBeginning", "root folder type of r", Kind::term, 3},
                                         Row{"BeginningAloneIsNoTerm", "root folder", Kind::identifier, 1},
                                         Row{"IdentifiersAreNotSplit", "pixelsPerInch", Kind::identifier, 1},
                                         Row{"StandardTerm", "text item delimiters", Kind::term, 3},
                                         Row{"StandardTermLongest", "text items of x", Kind::term, 2},
                                         Row{"ReservedWord", "end tell", Kind::grammar, 1},
                                         Row{"CommandThatBeginsWithAReservedWord", "end live view", Kind::term, 3},
                                         Row{"PipedIsAnIdentifier", "|pixels|", Kind::identifier, 1},
                                         Row{"RawCode", "«class docu»", Kind::term, 1},
                                         Row{"BadRawCode", "«class x»", Kind::nothing, 0},
                                         Row{"Number", "5", Kind::nothing, 0}, Row{"Nothing", "", Kind::nothing, 0}),
                         [](testing::TestParamInfo<Row> const& row) { return std::string(row.param.label); });

TEST(TermResolver, KeepsAllMeaningsOfAWord) {
  Terminology const terms = recipeTerms();
  std::vector<Word> const words = lex("camera");
  TermResolver resolver(words);
  resolver.setApplicationTerms(&terms);
  Resolution const resolution = resolver.resolve(0);
  EXPECT_EQ(resolution.meanings.type, "CObj"_code);
  EXPECT_EQ(resolution.meanings.property, "COco"_code);
  EXPECT_FALSE(resolution.meanings.enumerator);
}

TEST(TermResolver, KnowsTheTermsOfATellInsideItOnly) {
  std::vector<Word> const words = lex("pixels per inch");
  TermResolver const resolver(words);
  EXPECT_EQ(resolver.resolve(0).kind, Resolution::Kind::identifier);
}

TEST(TermResolver, ReservesTheWordsOfTheGrammar) {
  for (char const* word : {"tell", "of", "whose", "without", "about", "thru"}) {
    EXPECT_TRUE(TermResolver::isReserved(word)) << word;
  }
  EXPECT_FALSE(TermResolver::isReserved("tells"));
}

}  // namespace
}  // namespace morla::applescript
