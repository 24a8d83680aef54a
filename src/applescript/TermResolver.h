#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "applescript/Lexer.h"
#include "applescript/Terminology.h"

namespace morla::applescript {

/// What the words at one place of a script are.
struct Resolution {
  enum class Kind {
    nothing,     ///< no name: a number, a symbol, the line's end, …
    grammar,     ///< one reserved word of the language
    term,        ///< a term of a dictionary
    identifier,  ///< one word, the script's own
  };
  Kind kind = Kind::nothing;
  std::size_t words = 0;
  Meanings meanings;
};

/// Tells terms from identifiers: the longest sequence of names on the line that something knows; among equally long
/// ones a reserved word comes first, then the dictionary of the enclosing application `tell`, then the standard terms.
/// Words that nothing knows are identifiers, one by one.
class TermResolver {
 public:
  /// `words` must outlive this.
  explicit TermResolver(std::vector<Word> const& words) : words_(&words) {}

  /// The terms of the innermost application `tell`; null outside of all.
  void setApplicationTerms(Terminology const* terms) { application_ = terms; }
  [[nodiscard]] Terminology const* applicationTerms() const { return application_; }

  [[nodiscard]] Resolution resolve(std::size_t position) const;

  /// How many words from `position` on spell `phrase` (lower case, single blanks); 0 when they do not.
  [[nodiscard]] std::size_t matchPhrase(std::size_t position, std::string_view phrase) const;

  [[nodiscard]] static bool isReserved(std::string_view lowercaseWord);

 private:
  std::vector<Word> const* words_;
  Terminology const* application_ = nullptr;
};

}  // namespace morla::applescript
