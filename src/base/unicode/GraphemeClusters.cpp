#include "base/unicode/Hangul.h"
#include "base/unicode/TableLookup.h"
#include "base/unicode/Unicode.h"
#include "base/unicode/Utf8.h"

namespace morla::unicode {
namespace {

using enum GraphemeRole;

GraphemeRole roleOf(char32_t codePoint) {
  if (codePoint >= 0x20 && codePoint < 0x7F) return other;
  // A byte that is no text joins nothing, like a control character.
  if (codePoint >= kIllFormedByte) return control;
  if (hangul::isSyllable(codePoint)) {
    bool const isOpen = hangul::lettersOf(codePoint).trailing == hangul::kNoTrailing;
    return isOpen ? hangulLeadingVowel : hangulLeadingVowelTrailing;
  }
  auto const* range = findRange(kGraphemeRoles, codePoint);
  return range == nullptr ? other : range->role;
}

constexpr bool standsAlone(GraphemeRole role) {
  return role == cr || role == lf || role == control;
}

constexpr bool joinsInHangulSyllable(GraphemeRole before, GraphemeRole after) {
  switch (before) {
    case hangulLeading:
      return after == hangulLeading || after == hangulVowel || after == hangulLeadingVowel ||
             after == hangulLeadingVowelTrailing;
    case hangulVowel:
    case hangulLeadingVowel:
      return after == hangulVowel || after == hangulTrailing;
    case hangulTrailing:
    case hangulLeadingVowelTrailing:
      return after == hangulTrailing;
    default:
      return false;
  }
}

/// The rules GB3 to GB13 of UAX #29, read from left to right; what they need of the text before is kept here.
class ClusterSeams {
 public:
  explicit ClusterSeams(GraphemeRole first) { take(first); }

  /// True when the code point of role `next` belongs to the cluster of the one before. Call for each in turn.
  bool joins(GraphemeRole next) {
    bool const result = joinsLast(next);
    take(next);
    return result;
  }

 private:
  [[nodiscard]] bool joinsLast(GraphemeRole next) const {
    if (last_ == cr && next == lf) return true;
    if (standsAlone(last_) || standsAlone(next)) return false;
    if (next == extend || next == zeroWidthJoiner || next == spacingMark) return true;
    if (last_ == prepend) return true;
    if (next == pictographic) return emoji_ == Emoji::joined;
    if (next == regionalIndicator) return last_ == regionalIndicator && !flagIsComplete_;
    return joinsInHangulSyllable(last_, next);
  }

  void take(GraphemeRole role) {
    flagIsComplete_ = role == regionalIndicator && last_ == regionalIndicator && !flagIsComplete_;
    if (role == pictographic) {
      emoji_ = Emoji::open;
    } else if (role == zeroWidthJoiner && emoji_ == Emoji::open) {
      emoji_ = Emoji::joined;
    } else if (role == extend && emoji_ == Emoji::open) {
      // A skin tone or a variation selector keeps the emoji open for a joiner.
    } else {
      emoji_ = Emoji::none;
    }
    last_ = role;
  }

  /// A pictograph, then marks, then a joiner: only then the next pictograph continues the cluster.
  enum class Emoji { none, open, joined };

  GraphemeRole last_ = control;
  Emoji emoji_ = Emoji::none;
  bool flagIsComplete_ = false;
};

}  // namespace

std::vector<std::string_view> graphemeClusters(std::string_view text) {
  std::vector<std::string_view> clusters;
  if (text.empty()) return clusters;

  auto const first = decodeFirst(text);
  ClusterSeams seams(roleOf(first.codePoint));
  std::size_t start = 0;
  std::size_t position = first.length;
  while (position < text.size()) {
    auto const [codePoint, length] = decodeFirst(text.substr(position));
    if (!seams.joins(roleOf(codePoint))) {
      clusters.push_back(text.substr(start, position - start));
      start = position;
    }
    position += length;
  }
  clusters.push_back(text.substr(start));
  return clusters;
}

}  // namespace morla::unicode
