#pragma once

#include <memory>
#include <optional>

#include "applescript/RunState.h"
#include "applescript/SyntaxTree.h"

/// Elements and properties of the values that live in the script itself: lists, texts, records, files.
namespace morla::applescript {

/// Which elements a reference picks; its operands are evaluated.
struct ElementRequest {
  Code type;
  tree::ElementOf::Form form;
  Datum selector;
  Datum upper;
  /// `from word 1 to word 3`: the bounds of a range as elements of the same value; null where they are numbers.
  std::shared_ptr<ElementRequest const> lowerElement = nullptr;
  std::shared_ptr<ElementRequest const> upperElement = nullptr;
};

/// -1728 when there is no such element.
[[nodiscard]] Datum elementOfValue(Datum const& value, ElementRequest const& request, RunState& state);

/// A reference to one item of a list, when the request asks for one; nothing for all other requests.
[[nodiscard]] std::optional<ItemReference> itemReference(Datum const& value, ElementRequest const& request);

/// -10006 when it cannot be set.
void setElementOfValue(Datum const& value, ElementRequest const& request, Datum element, RunState& state);

/// Puts `element` at the beginning or the end of a list.
void insertIntoValue(InsertionPoint const& place, Datum element, RunState& state);

/// Nothing when the value has no such property.
[[nodiscard]] std::optional<Datum> propertyOfValue(Datum const& value, RecordKey const& key, RunState& state);

/// Nothing when the value has no elements to count.
[[nodiscard]] std::optional<std::int64_t> countOfValue(Datum const& value);

/// Codes that mean something to the language alone and that applications know only by their own dictionary.
[[nodiscard]] bool isLanguageProperty(Code code);
[[nodiscard]] bool isLanguageElement(Code type);

[[nodiscard]] std::string quotedForShell(std::string_view text);

}  // namespace morla::applescript
