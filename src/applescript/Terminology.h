#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "applescript/Dictionary.h"

namespace morla::applescript {

/// All that one phrase can mean; its place in the sentence decides ("camera" is a class and a property).
struct Meanings {
  std::optional<Code> type;        ///< the name of a class
  std::optional<Code> pluralType;  ///< the plural of a class
  std::optional<Code> property;
  std::optional<Code> enumerator;
  Dictionary::Command const* command = nullptr;

  /// Takes over what this phrase does not mean yet.
  void complete(Meanings const& other);
};

/// The terms of one dictionary, by phrase and by code.
class Terminology {
 public:
  explicit Terminology(std::shared_ptr<Dictionary const> dictionary);

  /// `phrase`: words in lower case with single blanks between them. Null when the dictionary does not have it.
  [[nodiscard]] Meanings const* find(std::string_view phrase) const;

  /// How many words the longest phrase has that begins with `word`; 0 when none does.
  [[nodiscard]] std::size_t longestPhraseFrom(std::string_view word) const;

  [[nodiscard]] std::vector<Dictionary::Parameter const*> parametersOf(Dictionary::Command const& command) const;

  [[nodiscard]] std::optional<std::string> className(Code code) const;
  [[nodiscard]] std::optional<std::string> propertyName(Code code) const;
  [[nodiscard]] std::optional<std::string> enumeratorName(Code code) const;
  [[nodiscard]] bool hasClass(Code code) const { return className(code).has_value(); }
  [[nodiscard]] std::optional<std::string> commandName(Code eventClass, Code eventId) const;

 private:
  Meanings& entry(std::string const& name);

  std::shared_ptr<Dictionary const> dictionary_;
  std::map<std::string, Meanings, std::less<>> phrases_;
  std::map<std::string, std::size_t, std::less<>> longest_;
};

/// The terms that the language itself and its standard additions bring, wherever a script stands.
[[nodiscard]] Terminology const& standardTerms();

/// ASCII letters in lower case: how phrases and identifiers are compared.
[[nodiscard]] std::string lowercaseKey(std::string_view text);

}  // namespace morla::applescript
