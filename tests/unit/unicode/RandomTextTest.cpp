#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "base/unicode/Unicode.h"

namespace morla::unicode {
namespace {

/// Texts that are likely to meet a rule: pieces of well-formed text in every shape, broken ones, and mere bytes.
class RandomTexts {
 public:
  explicit RandomTexts(unsigned seed) : source_(seed) {}

  std::string next() {
    std::string text;
    for (auto pieces = below(12); pieces > 0; --pieces) {
      auto const kind = below(8);
      if (kind == 0) {
        text += static_cast<char>(below(256));
      } else if (kind == 1) {
        text += static_cast<char>(below(128));
      } else {
        text += kPieces[below(std::size(kPieces))];
      }
      if (below(16) == 0 && !text.empty()) text.pop_back();
    }
    return text;
  }

 private:
  static constexpr std::string_view kPieces[]{
      "A",      "z",      "\r",         "\n", "é",      "e",      "\u0301", "\u0323", "\u0334",
      "\u0345", "\u0327", "ß",          "ŉ",  "İ",      "ı",      "ς",      "Σ",      "ΐ",
      "ᾳ",      "\u1F82", "Ꭰ",          "ꭰ",  "𐐀",      "한",     "\uD558", "\u1112", "\u1161",
      "\u11AB", "\u212A", "\u212B",     "👩", "\u200D", "\uFE0F", "🇫",      "🇷",      "\U0001F3FD",
      "\u0600", "\u093F", "\U0001D15E", "ﬃ",  "\uF900", "\u0344", "\u0F73", "\u0E33", "\U00011099",
  };

  std::size_t below(std::size_t bound) { return source_() % bound; }

  std::mt19937 source_;
};

constexpr int kTexts = 20000;

TEST(RandomTexts, DecomposeOnceAndForAll) {
  RandomTexts texts(1);
  for (int i = 0; i < kTexts; ++i) {
    auto const text = texts.next();
    auto const once = canonicallyDecomposed(text);
    ASSERT_EQ(canonicallyDecomposed(once), once) << testing::PrintToString(text);
  }
}

TEST(RandomTexts, FoldOnceAndForAll) {
  RandomTexts texts(2);
  for (int i = 0; i < kTexts; ++i) {
    auto const text = texts.next();
    auto const once = caseFolded(text);
    ASSERT_EQ(caseFolded(once), once) << testing::PrintToString(text);
  }
}

TEST(RandomTexts, EqualTheirDecompositionsAndTheirFoldings) {
  RandomTexts texts(3);
  for (int i = 0; i < kTexts; ++i) {
    auto const text = texts.next();
    auto const decomposed = canonicallyDecomposed(text);
    ASSERT_TRUE(equals(text, decomposed)) << testing::PrintToString(text);
    ASSERT_TRUE(equalsIgnoringCase(text, caseFolded(decomposed))) << testing::PrintToString(text);
    ASSERT_TRUE(equalsIgnoringCase(text, decomposed)) << testing::PrintToString(text);
  }
}

TEST(RandomTexts, CompareAsTheirComparisonKeysDo) {
  auto const key = [](std::string const& text) {
    return canonicallyDecomposed(caseFolded(canonicallyDecomposed(text)));
  };
  RandomTexts texts(4);
  auto previous = texts.next();
  for (int i = 0; i < kTexts; ++i) {
    auto const text = texts.next();
    ASSERT_EQ(equals(text, previous), canonicallyDecomposed(text) == canonicallyDecomposed(previous))
        << testing::PrintToString(text) << ' ' << testing::PrintToString(previous);
    ASSERT_EQ(equalsIgnoringCase(text, previous), key(text) == key(previous))
        << testing::PrintToString(text) << ' ' << testing::PrintToString(previous);
    previous = text;
  }
}

TEST(RandomTexts, StayWellFormedOrIllFormed) {
  RandomTexts texts(5);
  for (int i = 0; i < kTexts; ++i) {
    auto const text = texts.next();
    auto const wellFormed = isWellFormed(text);
    for (auto const& changed : {lowercased(text), uppercased(text), caseFolded(text), canonicallyDecomposed(text)}) {
      ASSERT_EQ(isWellFormed(changed), wellFormed) << testing::PrintToString(text);
    }
  }
}

TEST(RandomTexts, AreTheirClustersInARow) {
  RandomTexts texts(6);
  for (int i = 0; i < kTexts; ++i) {
    auto const text = texts.next();
    std::string joined;
    for (auto const cluster : graphemeClusters(text)) {
      ASSERT_FALSE(cluster.empty()) << testing::PrintToString(text);
      joined += cluster;
    }
    ASSERT_EQ(joined, text);
  }
}

TEST(RandomTexts, HaveClustersThatAreClustersAlone) {
  RandomTexts texts(7);
  for (int i = 0; i < kTexts; ++i) {
    auto const text = texts.next();
    for (auto const cluster : graphemeClusters(text)) {
      ASSERT_EQ(graphemeClusters(cluster).size(), 1U) << testing::PrintToString(text);
    }
  }
}

}  // namespace
}  // namespace morla::unicode
