#include <algorithm>
#include <compare>
#include <cstddef>
#include <vector>

#include "base/unicode/Hangul.h"
#include "base/unicode/TableLookup.h"
#include "base/unicode/Unicode.h"
#include "base/unicode/Utf8.h"

namespace morla::unicode {
namespace {

std::uint8_t combiningClassOf(char32_t codePoint) {
  auto const* range = findRange(kCombiningClasses, codePoint);
  return range == nullptr ? std::uint8_t{0} : range->combiningClass;
}

/// Writes code points in canonical order: the marks after a base are sorted by combining class, equal classes as they
/// came.
class CanonicalWriter {
 public:
  explicit CanonicalWriter(std::string& out) : out_(out) {}
  CanonicalWriter(CanonicalWriter const&) = delete;
  CanonicalWriter& operator=(CanonicalWriter const&) = delete;
  ~CanonicalWriter() { flushMarks(); }

  void append(char32_t codePoint) {
    auto const combiningClass = combiningClassOf(codePoint);
    if (combiningClass != 0) {
      marks_.push_back({combiningClass, marks_.size(), codePoint});
      return;
    }
    flushMarks();
    appendCodePoint(out_, codePoint);
  }

  /// `text` is ASCII, of which nothing combines.
  void appendAscii(std::string_view text) {
    flushMarks();
    out_ += text;
  }

 private:
  /// Compared member by member: what has one class keeps the order of its arrival.
  struct Mark {
    std::uint8_t combiningClass;
    std::size_t arrival;
    char32_t codePoint;
    friend auto operator<=>(Mark const&, Mark const&) = default;
  };

  void flushMarks() {
    // Not std::stable_sort: clang reports a deprecated function inside the one of libstdc++ 12.
    if (marks_.size() > 1) std::ranges::sort(marks_);
    for (auto const& mark : marks_) appendCodePoint(out_, mark.codePoint);
    marks_.clear();
  }

  std::string& out_;
  std::vector<Mark> marks_;
};

void appendDecomposed(CanonicalWriter& out, char32_t codePoint) {
  if (hangul::isSyllable(codePoint)) {
    auto const letters = hangul::lettersOf(codePoint);
    out.append(letters.leading);
    out.append(letters.vowel);
    if (letters.trailing != hangul::kNoTrailing) out.append(letters.trailing);
  } else if (auto const* mapping = findMapping(kCanonicalDecompositions, codePoint)) {
    forEachTarget(*mapping, [&](char32_t target) { out.append(target); });
  } else {
    out.append(codePoint);
  }
}

}  // namespace

std::string canonicallyDecomposed(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  {
    CanonicalWriter writer(out);
    while (!text.empty()) {
      if (auto const ascii = asciiPrefixLength(text); ascii > 0) {
        writer.appendAscii(text.substr(0, ascii));
        text.remove_prefix(ascii);
        continue;
      }
      auto const [codePoint, length] = decodeFirst(text);
      appendDecomposed(writer, codePoint);
      text.remove_prefix(length);
    }
  }
  return out;
}

}  // namespace morla::unicode
