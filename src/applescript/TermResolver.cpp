#include "applescript/TermResolver.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace morla::applescript {
namespace {

/// Sorted. Words that begin or join productions of the grammar; none of them can be a variable.
constexpr auto kReservedWords = std::to_array<std::string_view>(
    {"about",     "above",       "after",       "against", "and",      "applescript", "around",  "as",     "at",
     "back",      "before",      "beginning",   "begins",  "behind",   "below",       "beneath", "beside", "between",
     "but",       "by",          "considering", "contain", "contains", "continue",    "copy",    "div",    "does",
     "eighth",    "else",        "end",         "ends",    "equal",    "equals",      "error",   "every",  "exit",
     "false",     "fifth",       "first",       "for",     "fourth",   "from",        "front",   "get",    "given",
     "global",    "if",          "ignoring",    "in",      "into",     "is",          "it",      "its",    "last",
     "local",     "me",          "middle",      "mod",     "my",       "ninth",       "not",     "of",     "on",
     "onto",      "or",          "over",        "prop",    "property", "put",         "ref",     "repeat", "return",
     "returning", "script",      "second",      "set",     "seventh",  "since",       "sixth",   "some",   "starts",
     "tell",      "tenth",       "that",        "the",     "then",     "third",       "through", "thru",   "timeout",
     "to",        "transaction", "true",        "try",     "until",    "where",       "while",   "whose",  "with",
     "without"});

static_assert(std::ranges::is_sorted(kReservedWords));

/// Reserved before the other word alone: "out of". Without it each is a variable.
constexpr auto kPairs = std::to_array<std::pair<std::string_view, std::string_view>>(
    {{"apart", "from"}, {"aside", "from"}, {"instead", "of"}, {"out", "of"}});

}  // namespace

bool TermResolver::isReserved(std::string_view lowercaseWord) {
  return std::ranges::binary_search(kReservedWords, lowercaseWord);
}

/// «class docu», «property pnam», «constant ****Rjpg»
[[nodiscard]] static Resolution resolveRawCode(std::string_view text) {
  Resolution result{Resolution::Kind::term, 1, {}};
  std::size_t const blank = text.find(' ');
  if (blank == std::string_view::npos || text.size() < blank + 5) return {};
  std::string_view const kind = text.substr(0, blank);
  std::string_view const code = text.substr(blank + 1);
  if (kind == "class" && code.size() == 4) {
    result.meanings.type = Code(code);
  } else if (kind == "property" && code.size() == 4) {
    result.meanings.property = Code(code);
  } else if (kind == "constant" && code.size() == 8) {
    result.meanings.enumerator = Code(code.substr(4));
  } else {
    return {};
  }
  return result;
}

Resolution TermResolver::resolve(std::size_t position) const {
  Word const& first = (*words_)[position];
  if (first.kind == WordKind::pipedName) return {Resolution::Kind::identifier, 1, {}};
  if (first.kind == WordKind::chevron) return resolveRawCode(first.text);
  if (first.kind != WordKind::name) return {};
  Terminology const& standard = standardTerms();
  std::size_t longest = standard.longestPhraseFrom(first.key);
  if (application_ != nullptr) longest = std::max(longest, application_->longestPhraseFrom(first.key));
  longest = std::max<std::size_t>(longest, 1);
  for (auto const& [word, partner] : kPairs) {
    if (first.key == word && (*words_)[position + 1].isName(partner)) return {Resolution::Kind::grammar, 1, {}};
  }

  // A line end is a word of another kind, so no phrase crosses it.
  std::vector<std::string> phrases;
  std::string phrase;
  for (std::size_t i = position; i < position + longest && (*words_)[i].kind == WordKind::name; ++i) {
    if (!phrase.empty()) phrase += ' ';
    phrase += (*words_)[i].key;
    phrases.push_back(phrase);
  }
  for (std::size_t count = phrases.size(); count > 0; --count) {
    std::string const& candidate = phrases[count - 1];
    if (count == 1 && isReserved(candidate)) return {Resolution::Kind::grammar, 1, {}};
    Meanings const* own = application_ == nullptr ? nullptr : application_->find(candidate);
    Meanings const* common = standard.find(candidate);
    if (own == nullptr && common == nullptr) continue;
    Resolution result{Resolution::Kind::term, count, {}};
    if (own != nullptr) result.meanings = *own;
    if (common != nullptr) result.meanings.complete(*common);
    return result;
  }
  return {Resolution::Kind::identifier, 1, {}};
}

std::size_t TermResolver::matchPhrase(std::size_t position, std::string_view phrase) const {
  std::size_t count = 0;
  for (;;) {
    std::size_t const blank = phrase.find(' ');
    if (!(*words_)[position + count].isName(phrase.substr(0, blank))) return 0;
    ++count;
    if (blank == std::string_view::npos) return count;
    phrase.remove_prefix(blank + 1);
  }
}

}  // namespace morla::applescript
