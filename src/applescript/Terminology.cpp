#include "applescript/Terminology.h"

#include <algorithm>
#include <utility>

namespace morla::applescript {

std::string lowercaseKey(std::string_view text) {
  std::string key(text);
  for (char& c : key) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return key;
}

void Meanings::complete(Meanings const& other) {
  if (!type) type = other.type;
  if (!pluralType) pluralType = other.pluralType;
  if (!property) property = other.property;
  if (!enumerator) enumerator = other.enumerator;
  if (command == nullptr) command = other.command;
}

Terminology::Terminology(std::shared_ptr<Dictionary const> dictionary) : dictionary_(std::move(dictionary)) {
  // The first definition of a phrase counts, as the order of a table is its author's choice.
  for (auto const& term : dictionary_->classes) {
    entry(term.name).complete({.type = term.code, .pluralType = {}, .property = {}, .enumerator = {}});
    entry(term.plural).complete({.type = {}, .pluralType = term.code, .property = {}, .enumerator = {}});
  }
  for (auto const& term : dictionary_->properties) {
    entry(term.name).complete({.type = {}, .pluralType = {}, .property = term.code, .enumerator = {}});
  }
  for (auto const& term : dictionary_->enumerators) {
    entry(term.name).complete({.type = {}, .pluralType = {}, .property = {}, .enumerator = term.code});
  }
  for (auto const& term : dictionary_->commands) {
    Meanings meaning;
    meaning.command = &term;
    entry(term.name).complete(meaning);
  }
}

Meanings& Terminology::entry(std::string const& name) {
  std::string const key = lowercaseKey(name);
  std::size_t& longest = longest_[key.substr(0, key.find(' '))];
  longest = std::max(longest, static_cast<std::size_t>(std::ranges::count(key, ' ')) + 1);
  return phrases_[key];
}

Meanings const* Terminology::find(std::string_view phrase) const {
  auto const found = phrases_.find(phrase);
  return found == phrases_.end() ? nullptr : &found->second;
}

std::size_t Terminology::longestPhraseFrom(std::string_view word) const {
  auto const found = longest_.find(word);
  return found == longest_.end() ? 0 : found->second;
}

std::vector<Dictionary::Parameter const*> Terminology::parametersOf(Dictionary::Command const& command) const {
  std::vector<Dictionary::Parameter const*> parameters;
  for (auto const& parameter : dictionary_->parameters) {
    if (parameter.command == command.name) parameters.push_back(&parameter);
  }
  return parameters;
}

template <typename Terms>
[[nodiscard]] static std::optional<std::string> nameOf(Terms const& terms, Code code) {
  auto const found = std::ranges::find_if(terms, [code](auto const& term) { return term.code == code; });
  if (found == terms.end()) return std::nullopt;
  return found->name;
}

std::optional<std::string> Terminology::className(Code code) const {
  return nameOf(dictionary_->classes, code);
}

std::optional<std::string> Terminology::propertyName(Code code) const {
  return nameOf(dictionary_->properties, code);
}

std::optional<std::string> Terminology::enumeratorName(Code code) const {
  return nameOf(dictionary_->enumerators, code);
}

std::optional<std::string> Terminology::commandName(Code eventClass, Code eventId) const {
  auto const found = std::ranges::find_if(dictionary_->commands, [&](Dictionary::Command const& command) {
    return command.eventClass == eventClass && command.eventId == eventId;
  });
  if (found == dictionary_->commands.end()) return std::nullopt;
  return found->name;
}

}  // namespace morla::applescript
