// Compares every code point, and a few thousand texts, with what `tools/generate-unicode-tables --dump FILE` wrote
// down. One argument: FILE. Exit status 0 or 1. A plain program, because a test per code point would be a million
// tests.

#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "base/unicode/Unicode.h"
#include "base/unicode/Utf8.h"

namespace morla::unicode {
namespace {

constexpr char32_t kLast = 0x10FFFF;

bool isSurrogate(char32_t codePoint) {
  return codePoint >= 0xD800 && codePoint <= 0xDFFF;
}

std::string utf8(char32_t codePoint) {
  std::string out;
  appendCodePoint(out, codePoint);
  return out;
}

/// "41 301" as UTF-8.
std::string fromHexadecimal(std::string const& listed) {
  std::string out;
  std::istringstream in(listed);
  for (std::string word; in >> word;) appendCodePoint(out, static_cast<char32_t>(std::stoul(word, nullptr, 16)));
  return out;
}

std::string readable(std::string const& text) {
  std::ostringstream out;
  for (std::string_view rest = text; !rest.empty();) {
    auto const [codePoint, length] = decodeFirst(rest);
    out << (rest.size() == text.size() ? "" : " ") << std::hex << std::uppercase
        << static_cast<std::uint32_t>(codePoint);
    rest.remove_prefix(length);
  }
  return out.str();
}

class Report {
 public:
  void expect(std::string const& kind, std::string const& text, std::string const& got, std::string const& wanted) {
    ++comparisons_;
    if (got == wanted) return;
    if (++failures_ <= 20) {
      std::printf("%s of %s: got %s, expected %s\n", kind.c_str(), readable(text).c_str(), readable(got).c_str(),
                  readable(wanted).c_str());
    }
  }
  void fail(std::string const& why) {
    ++failures_;
    std::printf("%s\n", why.c_str());
  }
  [[nodiscard]] int exitStatus() const {
    std::printf("%ld comparisons, %ld failures\n", comparisons_, failures_);
    return failures_ == 0 ? 0 : 1;
  }

 private:
  long comparisons_ = 0;
  long failures_ = 0;
};

using Rule = std::string (*)(std::string_view);
using Answers = std::map<std::string, std::map<std::string, std::string>>;  ///< kind -> text -> expected

Answers readAnswers(std::istream& in) {
  Answers answers;
  for (std::string line; std::getline(in, line);) {
    auto const first = line.find(';');
    auto const second = line.find(';', first + 1);
    answers[line.substr(0, first)][fromHexadecimal(line.substr(first + 1, second - first - 1))] =
        fromHexadecimal(line.substr(second + 1));
  }
  return answers;
}

/// What the dump does not list maps to itself.
void checkEveryCodePoint(std::string const& kind, Rule rule, Answers const& answers, Report& report) {
  auto const& listed = answers.at(kind);
  for (char32_t codePoint = 0; codePoint <= kLast; ++codePoint) {
    if (isSurrogate(codePoint)) continue;
    auto const text = utf8(codePoint);
    auto const found = listed.find(text);
    report.expect(kind, text, rule(text), found == listed.end() ? text : found->second);
  }
}

void checkListedTexts(std::string const& kind, Rule rule, Answers const& answers, Report& report) {
  for (auto const& [text, expected] : answers.at(kind)) report.expect(kind, text, rule(text), expected);
}

/// A code point that is no mark separates the marks on both sides of it; a mark lets the lower class come first.
void checkWhatSeparatesMarks(Answers const& answers, Report& report) {
  static constexpr std::string_view kHighest = "\u0345";
  static constexpr std::string_view kLowest = "\u0334";
  std::set<std::string> marks;
  for (auto const& [text, sorted] : answers.at("order")) {
    for (std::string_view rest = text; !rest.empty();) {
      auto const length = decodeFirst(rest).length;
      marks.emplace(rest.substr(0, length));
      rest.remove_prefix(length);
    }
  }
  auto const& decompositions = answers.at("nfd");
  for (char32_t codePoint = 0; codePoint <= kLast; ++codePoint) {
    auto const middle = utf8(codePoint);
    if (isSurrogate(codePoint) || decompositions.contains(middle) || marks.contains(middle)) continue;
    auto const text = std::string(kHighest) + middle + std::string(kLowest);
    report.expect("order", text, canonicallyDecomposed(text), text);
  }
}

int check(char const* path) {
  std::ifstream in(path);
  auto const answers = readAnswers(in);
  Report report;
  for (auto const* kind : {"lower", "upper", "fold", "nfd", "order"}) {
    if (!answers.contains(kind)) report.fail(std::string(path) + " says nothing about " + kind);
  }
  if (answers.size() == 5) {
    checkEveryCodePoint("lower", lowercased, answers, report);
    checkEveryCodePoint("upper", uppercased, answers, report);
    checkEveryCodePoint("fold", caseFolded, answers, report);
    checkEveryCodePoint("nfd", canonicallyDecomposed, answers, report);
    checkListedTexts("lower", lowercased, answers, report);
    checkListedTexts("fold", caseFolded, answers, report);
    checkListedTexts("order", canonicallyDecomposed, answers, report);
    checkWhatSeparatesMarks(answers, report);
  }
  return report.exitStatus();
}

}  // namespace
}  // namespace morla::unicode

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: unicode_reference_check FILE\n");
    return 1;
  }
  return morla::unicode::check(argv[1]);
}
