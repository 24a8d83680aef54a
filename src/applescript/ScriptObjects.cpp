#include "applescript/ScriptObjects.h"

#include <algorithm>

#include "applescript/Coercion.h"
#include "applescript/DateProperties.h"
#include "applescript/Describe.h"
#include "applescript/ScriptError.h"
#include "applescript/TextElements.h"

namespace morla::applescript {
namespace {

using Form = tree::ElementOf::Form;

[[nodiscard]] std::string describe(ElementRequest const& request, RunState const& state) {
  std::string const name = typeName(request.type, state);
  switch (request.form) {
    case Form::indexOrName:
    case Form::index:
    case Form::name:
      return name + " " + sourceText(request.selector, state);
    case Form::id:
      return name + " id " + sourceText(request.selector, state);
    case Form::range:
      return (request.type == "ctxt"_code ? name : name + "s") + " " + sourceText(request.selector, state) + " thru " +
             sourceText(request.upper, state);
    case Form::every:
      return "every " + name;
    case Form::first:
      return name + " 1";
    case Form::last:
      return "last " + name;
    case Form::middle:
      return "middle " + name;
    case Form::some:
      return "some " + name;
    case Form::test:
      return "every " + name + " whose …";
    case Form::before:
      return name + " before";
    case Form::after:
      return name + " after";
  }
  return name;
}

[[noreturn]] void raiseCannotGet(Datum const& value, ElementRequest const& request, RunState const& state) {
  raise(errors::kNoSuchObject, "Can’t get " + describe(request, state) + " of " + sourceText(value, state) + ".",
        value);
}

/// From 0; nothing when there is no such place.
[[nodiscard]] std::optional<std::size_t> position(std::int64_t index, std::size_t count) {
  std::int64_t const size = static_cast<std::int64_t>(count);
  std::int64_t const place = index < 0 ? size + index : index - 1;
  if (index == 0 || place < 0 || place >= size) return std::nullopt;
  return static_cast<std::size_t>(place);
}

[[nodiscard]] std::optional<std::size_t> positionOf(ElementRequest const& request, std::size_t count,
                                                    RunState* state = nullptr) {
  switch (request.form) {
    case Form::first:
      return position(1, count);
    case Form::last:
      return position(-1, count);
    case Form::middle:
      return position(static_cast<std::int64_t>((count + 1) / 2), count);
    case Form::some:
      if (count == 0 || state == nullptr) return position(static_cast<std::int64_t>(count == 0 ? 0 : 1), count);
      return std::uniform_int_distribution<std::size_t>(0, count - 1)(state->random);
    case Form::indexOrName:
    case Form::index: {
      auto const number = coercedToNumber(dereferenced(request.selector));
      auto const* index = number ? number->as<std::int64_t>() : nullptr;
      return index == nullptr ? std::nullopt : position(*index, count);
    }
    case Form::name:
    case Form::id:
    case Form::range:
    case Form::every:
    case Form::test:
    case Form::before:
    case Form::after:
      break;
  }
  return std::nullopt;
}

struct Bounds {
  std::size_t first;
  std::size_t last;
};
/// Bounds the wrong way round mean the same places.
[[nodiscard]] std::optional<Bounds> boundsOf(ElementRequest const& request, std::size_t count) {
  auto const place = [count](Datum const& bound) -> std::optional<std::size_t> {
    auto const number = coercedToNumber(dereferenced(bound));
    auto const* index = number ? number->as<std::int64_t>() : nullptr;
    return index == nullptr ? std::nullopt : position(*index, count);
  };
  auto const a = place(request.selector);
  auto const b = place(request.upper);
  if (!a || !b) return std::nullopt;
  return Bounds{std::min(*a, *b), std::max(*a, *b)};
}

[[nodiscard]] bool areCharacters(Code type) {
  return type == "cha "_code || type == "cobj"_code || type == "ctxt"_code;
}

/// Whether every byte is a character, so that one is found without looking at those before it.
[[nodiscard]] bool isPlain(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80U && c != '\r'; });
}

[[nodiscard]] std::optional<std::vector<std::string_view>> partsOf(std::string_view text, Code type, RunState& state) {
  std::vector<std::string_view> parts;
  if (areCharacters(type)) {
    parts = charactersOf(text);
  } else if (type == "cwor"_code) {
    parts = wordsOf(text);
  } else if (type == "cpar"_code) {
    parts = paragraphsOf(text);
  } else if (type == "citm"_code) {
    parts = textItemsOf(text, state.delimiters, state.considerations);
  } else {
    return std::nullopt;
  }
  state.spend(text.size() / 16 + parts.size());
  return parts;
}

/// The part that the request asks for one of; nothing when there is none, or when texts have no such elements.
[[nodiscard]] std::optional<std::string_view> partOf(std::string_view text, ElementRequest const& request,
                                                     RunState& state) {
  if (areCharacters(request.type) && isPlain(text)) {
    state.spend(text.size() / 64);
    auto const place = positionOf(request, text.size(), &state);
    return place ? std::optional(text.substr(*place, 1)) : std::nullopt;
  }
  auto const parts = partsOf(text, request.type, state);
  auto const place = parts ? positionOf(request, parts->size(), &state) : std::nullopt;
  return place ? std::optional((*parts)[*place]) : std::nullopt;
}

/// The part of `text` from one bound to the other, which may be characters, words, paragraphs or text items.
[[nodiscard]] std::optional<std::string_view> spanOf(std::string_view text, ElementRequest const& request,
                                                     RunState& state) {
  auto const place = [&](Datum const& number, ElementRequest const* element) -> std::optional<std::string_view> {
    if (element != nullptr) return partOf(text, *element, state);
    return partOf(text, {"cha "_code, Form::index, number, {}}, state);
  };
  auto const a = place(request.selector, request.lowerElement.get());
  auto const b = place(request.upper, request.upperElement.get());
  if (!a || !b) return std::nullopt;
  char const* const start = std::min(a->data(), b->data());
  char const* const end = std::max(a->data() + a->size(), b->data() + b->size());
  return std::string_view(start, static_cast<std::size_t>(end - start));
}

[[nodiscard]] std::optional<std::vector<Datum>> elementsOfText(Text const& text, Code type, RunState& state) {
  if (type == "ctxt"_code) return std::nullopt;
  auto const found = partsOf(text.view(), type, state);
  if (!found) return std::nullopt;
  std::vector<std::string_view> const& parts = *found;
  std::vector<Datum> elements;
  elements.reserve(parts.size());
  for (std::string_view const part : parts) elements.emplace_back(std::string(part));
  return elements;
}

[[nodiscard]] bool isOfClass(Datum const& datum, Code type) {
  Code const actual = classOf(datum);
  if (type == "nmbr"_code) return actual == "long"_code || actual == "doub"_code;
  if (type == "TEXT"_code || type == "utxt"_code) return actual == "ctxt"_code;
  return actual == type;
}

/// All elements of the class; nothing when the value has no elements of it at all.
[[nodiscard]] std::optional<std::vector<Datum>> elementsOf(Datum const& value, Code type, RunState& state) {
  if (auto const* text = value.as<Text>()) return elementsOfText(*text, type, state);
  auto const* list = value.as<ListReference>();
  if (list == nullptr) return std::nullopt;
  if (type == "cobj"_code) return (*list)->items;
  std::vector<Datum> elements;
  for (Datum const& item : (*list)->items) {
    if (isOfClass(dereferenced(item), type)) elements.push_back(item);
  }
  return elements;
}

[[nodiscard]] std::optional<Datum> propertyOfList(ListReference const& list, Code code, RunState& state) {
  std::vector<Datum> const& items = list->items;
  if (code == "leng"_code) return static_cast<std::int64_t>(items.size());
  if (code == "rvse"_code) return state.makeList({items.rbegin(), items.rend()});
  if (code == "rest"_code) {
    if (items.empty()) return std::nullopt;
    return state.makeList({items.begin() + 1, items.end()});
  }
  return std::nullopt;
}

/// The code point of one character, a list of them of more.
[[nodiscard]] Datum idOfText(Text const& text, RunState& state) {
  std::vector<Datum> points;
  for (std::int64_t const point : codePointsOf(text.view())) points.emplace_back(point);
  if (points.size() == 1) return points.front();
  return state.makeList(std::move(points));
}

[[nodiscard]] std::optional<Datum> delimitersDatum(RunState& state) {
  if (state.delimitersAreText && state.delimiters.size() == 1) return state.delimiters.front();
  std::vector<Datum> items;
  for (std::string const& delimiter : state.delimiters) items.emplace_back(delimiter);
  return state.makeList(std::move(items));
}

}  // namespace

std::string quotedForShell(std::string_view text) {
  std::string result = "'";
  for (char const c : text) {
    if (c == '\'') {
      result += "'\\''";
    } else {
      result += c;
    }
  }
  return result + "'";
}

bool isLanguageProperty(Code code) {
  return code == "txdl"_code || code == "leng"_code || code == "rvse"_code || code == "rest"_code ||
         code == "strq"_code || code == "psxp"_code;
}

bool isLanguageElement(Code type) {
  return type == "citm"_code || type == "cha "_code || type == "cwor"_code || type == "cpar"_code ||
         type == "ctxt"_code || type == "cobj"_code;
}

Datum elementOfValue(Datum const& value, ElementRequest const& request, RunState& state) {
  auto const* text = value.as<Text>();
  bool const hasElementBounds = request.lowerElement != nullptr || request.upperElement != nullptr;
  if (text != nullptr && request.form == Form::range && (request.type == "ctxt"_code || hasElementBounds)) {
    auto const span = spanOf(text->view(), request, state);
    if (!span) raiseCannotGet(value, request, state);
    Text const part{std::string(*span)};
    if (request.type == "ctxt"_code) return part;
    return elementOfValue(part, {request.type, Form::every, {}, {}}, state);
  }
  if (text != nullptr && request.form != Form::range && request.form != Form::every) {
    // One part, which must not make all others values.
    auto const part = request.type == "ctxt"_code ? std::nullopt : partOf(text->view(), request, state);
    if (!part) raiseCannotGet(value, request, state);
    return std::string(*part);
  }
  // The common case, which must not copy the list.
  auto const* list = value.as<ListReference>();
  if (list != nullptr && request.type == "cobj"_code && request.form != Form::range && request.form != Form::every) {
    auto const place = positionOf(request, (*list)->items.size(), &state);
    if (!place) raiseCannotGet(value, request, state);
    return (*list)->items[*place];
  }
  std::optional<std::vector<Datum>> elements = elementsOf(value, request.type, state);
  if (!elements) raiseCannotGet(value, request, state);
  if (request.form == Form::every) return state.makeList(*std::move(elements));
  if (request.form == Form::range) {
    auto const bounds = boundsOf(request, elements->size());
    if (!bounds) raiseCannotGet(value, request, state);
    auto const begin = elements->begin();
    return state.makeList(
        {begin + static_cast<std::ptrdiff_t>(bounds->first), begin + static_cast<std::ptrdiff_t>(bounds->last) + 1});
  }
  auto const place = positionOf(request, elements->size(), &state);
  if (!place) raiseCannotGet(value, request, state);
  return (*elements)[*place];
}

std::optional<ItemReference> itemReference(Datum const& value, ElementRequest const& request) {
  auto const* list = value.as<ListReference>();
  if (list == nullptr || request.type != "cobj"_code) return std::nullopt;
  auto const place = positionOf(request, (*list)->items.size());
  if (!place) return std::nullopt;
  return ItemReference{*list, *place};
}

void setElementOfValue(Datum const& value, ElementRequest const& request, Datum element, RunState& state) {
  auto const* list = value.as<ListReference>();
  std::optional<ItemReference> const place = itemReference(value, request);
  if (list != nullptr && !place) {
    raise(errors::kNoSuchObject,
          "Can’t set " + describe(request, state) + " of " + sourceText(value, state) + " to " +
              sourceText(element, state) + ".",
          value);
  }
  if (!place) {
    raise(errors::kCannotSet,
          "Can’t set " + describe(request, state) + " of " + sourceText(value, state) + " to " +
              sourceText(element, state) + ".",
          value);
  }
  place->list->items[place->index] = std::move(element);
}

void insertIntoValue(InsertionPoint const& place, Datum element, RunState& state) {
  Datum const object = dereferenced(*place.object);
  auto const* list = object.as<ListReference>();
  if (list == nullptr || (place.position != "end "_code && place.position != "bgng"_code)) {
    raise(errors::kCannotSet, "Can’t set " + sourceText(place, state) + " to " + sourceText(element, state) + ".",
          object);
  }
  std::vector<Datum>& items = (*list)->items;
  if (items.size() >= state.limits.listItems) raise(errors::kValueTooLarge, "The list is too large.");
  (*list)->account(sizeof(Datum));
  if (place.position == "end "_code) {
    items.push_back(std::move(element));
  } else {
    state.spend(items.size() / 16);
    items.insert(items.begin(), std::move(element));
  }
}

std::optional<Datum> propertyOfValue(Datum const& value, RecordKey const& key, RunState& state) {
  if (auto const* record = value.as<RecordReference>()) {
    if (Datum const* field = (*record)->find(key)) return *field;
  }
  auto const* code = std::get_if<Code>(&key);
  if (code == nullptr) return std::nullopt;
  if (*code == "pcls"_code) return TypeCode{classOf(value)};
  if (*code == "pcnt"_code) return value;
  if (*code == "leng"_code || *code == "nmbr"_code) {
    if (auto const count = countOfValue(value)) return *count;
  }
  if (value.as<Language>() != nullptr) {
    if (*code == "txdl"_code) return delimitersDatum(state);
    if (*code == "pnam"_code) return "AppleScript";
    if (*code == "vers"_code) return "2.8";
    return std::nullopt;
  }
  if (auto const* date = value.as<Date>()) return propertyOfDate(*date, *code);
  if (auto const* list = value.as<ListReference>()) return propertyOfList(*list, *code, state);
  if (auto const* text = value.as<Text>()) {
    if (*code == "ID  "_code) return idOfText(*text, state);
    if (*code == "strq"_code) return quotedForShell(text->view());
    if (*code == "psxp"_code) return posixPath(text->string());
    if (*code == "ctxt"_code || *code == "TEXT"_code) return value;
    return std::nullopt;
  }
  if (*code == "psxp"_code) {
    if (auto const* file = value.as<FileUrl>()) return file->path;
    if (auto const* alias = value.as<Alias>()) return alias->path;
  }
  return std::nullopt;
}

std::optional<std::int64_t> countOfValue(Datum const& value) {
  if (auto const* list = value.as<ListReference>()) return static_cast<std::int64_t>((*list)->items.size());
  if (auto const* record = value.as<RecordReference>()) return static_cast<std::int64_t>((*record)->fields.size());
  if (auto const* text = value.as<Text>()) {
    bool const isOneEach = isPlain(text->view());
    return static_cast<std::int64_t>(isOneEach ? text->size() : charactersOf(text->view()).size());
  }
  return std::nullopt;
}

}  // namespace morla::applescript
