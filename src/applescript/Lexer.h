#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "applescript/Interpreter.h"

namespace morla::applescript {

enum class WordKind {
  name,       ///< letters, digits, underscores: a keyword, a term or an identifier; the resolver tells which
  pipedName,  ///< |any text|: always an identifier
  chevron,    ///< «class docu»: a code written out
  integer,
  real,
  ordinal,  ///< "2nd"
  text,
  symbol,
  lineEnd,
  end,    ///< the last word of every script
  error,  ///< something that is no word of the language
};

struct Word {
  WordKind kind = WordKind::end;
  /// A name as written; what is between bars or chevrons; a text literal's characters; a number's digits; a symbol in
  /// ASCII ("<=" for "≤"); of an error, what was found in a compiler message's words.
  std::string text;
  std::string key;  ///< a name in lower case
  SourceRange range;

  [[nodiscard]] bool isSymbol(std::string_view symbol) const { return kind == WordKind::symbol && text == symbol; }
  [[nodiscard]] bool isName(std::string_view lowercase) const { return kind == WordKind::name && key == lowercase; }
};

/// Splits a script into words. Never fails: what is no word becomes an error word, which no production accepts.
/// Comments and continued line ends leave no word. The result ends with an `end` word.
[[nodiscard]] std::vector<Word> lex(std::string_view source);

}  // namespace morla::applescript
