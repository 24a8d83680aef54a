#include "applescript/Comparison.h"

#include <algorithm>

#include "applescript/Coercion.h"
#include "applescript/ScriptError.h"
#include "base/unicode/Unicode.h"

namespace morla::applescript {
namespace {

[[nodiscard]] bool ignores(Considerations considerations, std::uint32_t bit) {
  return (considerations.bits & bit) != 0;
}

[[nodiscard]] bool isAscii(std::string_view text) {
  return std::ranges::none_of(text, [](char c) { return static_cast<unsigned char>(c) >= 0x80U; });
}

/// The blocks of combining marks: what canonical decomposition leaves behind a letter.
[[nodiscard]] bool isCombining(char32_t c) {
  return (c >= 0x300 && c <= 0x36F) || (c >= 0x1AB0 && c <= 0x1AFF) || (c >= 0x1DC0 && c <= 0x1DFF) ||
         (c >= 0x20D0 && c <= 0x20FF) || (c >= 0xFE20 && c <= 0xFE2F);
}
[[nodiscard]] bool isHyphen(char32_t c) {
  return c == '-' || (c >= 0x2010 && c <= 0x2015) || c == 0x2212;
}
[[nodiscard]] bool isPunctuation(char32_t c) {
  static constexpr std::u32string_view kMarks =
      U".,?:;!'\"`()[]{}\u00AB\u00BB\u2018\u2019\u201C\u201D\u2026\u00BF\u00A1";
  return kMarks.find(c) != std::u32string_view::npos;
}
[[nodiscard]] bool isWhiteSpace(char32_t c) {
  return c == ' ' || (c >= 0x09 && c <= 0x0D) || c == 0xA0 || (c >= 0x2000 && c <= 0x200A) || c == 0x3000;
}

[[nodiscard]] std::string withoutIgnored(std::string_view text, Considerations considerations) {
  std::string result;
  for (std::size_t i = 0; i < text.size();) {
    CodePoint const c = codePointAt(text, i);
    bool const isIgnored = (ignores(considerations, Considerations::kIgnoreDiacriticals) && isCombining(c.value)) ||
                           (ignores(considerations, Considerations::kIgnoreHyphens) && isHyphen(c.value)) ||
                           (ignores(considerations, Considerations::kIgnorePunctuation) && isPunctuation(c.value)) ||
                           (ignores(considerations, Considerations::kIgnoreWhiteSpace) && isWhiteSpace(c.value));
    if (!isIgnored) result += text.substr(i, c.bytes);
    i += c.bytes;
  }
  return result;
}

/// A letter with an accent is not found by the letter alone: what follows a match must not belong to its last letter.
[[nodiscard]] bool endsAtCharacter(std::string_view text, std::size_t position) {
  return position >= text.size() || !isCombining(codePointAt(text, position).value);
}

[[nodiscard]] bool textContains(std::string_view text, std::string_view part) {
  if (part.empty()) return true;
  for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
    if (endsAtCharacter(text, at + part.size())) return true;
  }
  return false;
}

[[nodiscard]] bool isEqualAt(Datum const& a, Datum const& b, RunState const& state, std::size_t depth);

[[nodiscard]] bool areListsEqual(ListObject const& a, ListObject const& b, RunState const& state, std::size_t depth) {
  if (&a == &b) return true;
  if (a.items.size() != b.items.size()) return false;
  for (std::size_t i = 0; i < a.items.size(); ++i) {
    if (!isEqualAt(a.items[i], b.items[i], state, depth)) return false;
  }
  return true;
}

/// The order of a record's fields does not count.
[[nodiscard]] bool areRecordsEqual(RecordObject& a, RecordObject& b, RunState const& state, std::size_t depth) {
  if (&a == &b) return true;
  if (a.fields.size() != b.fields.size()) return false;
  return std::ranges::all_of(a.fields, [&](auto const& field) {
    Datum const* other = b.find(field.first);
    return other != nullptr && isEqualAt(field.second, *other, state, depth);
  });
}

[[nodiscard]] double numberOf(Datum const& datum) {
  if (auto const* integer = datum.as<std::int64_t>()) return static_cast<double>(*integer);
  return *datum.as<double>();
}
[[nodiscard]] bool isNumber(Datum const& datum) {
  return datum.as<std::int64_t>() != nullptr || datum.as<double>() != nullptr;
}

/// The digits at the beginning of `text`, without zeros at their front.
[[nodiscard]] std::string_view numberAtFront(std::string_view& text) {
  std::size_t end = 0;
  while (end < text.size() && text[end] >= '0' && text[end] <= '9') ++end;
  std::string_view digits = text.substr(0, end);
  text.remove_prefix(end);
  while (digits.size() > 1 && digits.front() == '0') digits.remove_prefix(1);
  return digits;
}

/// -1, 0 or 1; with numeric strings considered, digits that stand together are one number.
[[nodiscard]] int orderOfTexts(std::string_view a, std::string_view b, Considerations considerations) {
  if (!ignores(considerations, Considerations::kConsiderNumericStrings)) return std::clamp(a.compare(b), -1, 1);
  while (!a.empty() && !b.empty()) {
    std::string_view const x = numberAtFront(a);
    std::string_view const y = numberAtFront(b);
    if (!x.empty() && !y.empty()) {
      if (x.size() != y.size()) return x.size() < y.size() ? -1 : 1;
      if (int const order = x.compare(y); order != 0) return std::clamp(order, -1, 1);
      continue;
    }
    if (x.empty() != y.empty()) return x.empty() ? (a.front() < y.front() ? -1 : 1) : (x.front() < b.front() ? -1 : 1);
    if (a.front() != b.front())
      return static_cast<unsigned char>(a.front()) < static_cast<unsigned char>(b.front()) ? -1 : 1;
    a.remove_prefix(1);
    b.remove_prefix(1);
  }
  return a.empty() ? (b.empty() ? 0 : -1) : 1;
}

[[nodiscard]] bool isEqualAt(Datum const& a, Datum const& b, RunState const& state, std::size_t depth) {
  if (depth > state.limits.depth) raise(errors::kNestedTooDeeply, "The value is nested too deeply.");
  if (isNumber(a) && isNumber(b)) return numberOf(a) == numberOf(b);
  if (a.data.index() != b.data.index()) return false;
  if (auto const* text = a.as<Text>()) {
    std::string_view const x = text->view();
    std::string_view const y = b.as<Text>()->view();
    return x == y ||
           orderOfTexts(folded(x, state.considerations), folded(y, state.considerations), state.considerations) == 0;
  }
  if (auto const* list = a.as<ListReference>()) {
    return areListsEqual(**list, **b.as<ListReference>(), state, depth + 1);
  }
  if (auto const* record = a.as<RecordReference>()) {
    return areRecordsEqual(**record, **b.as<RecordReference>(), state, depth + 1);
  }
  if (auto const* object = a.as<ApplicationObject>()) {
    auto const* other = b.as<ApplicationObject>();
    if (object->application != other->application) return false;
    if (object->specifier == nullptr || other->specifier == nullptr) return object->specifier == other->specifier;
    return Value(object->specifier) == Value(other->specifier);
  }
  if (auto const* reference = a.as<ItemReference>()) {
    auto const* other = b.as<ItemReference>();
    return reference->list == other->list && reference->index == other->index;
  }
  if (auto const* boolean = a.as<bool>()) return *boolean == *b.as<bool>();
  if (auto const* type = a.as<TypeCode>()) return *type == *b.as<TypeCode>();
  if (auto const* enumerator = a.as<Enumerator>()) return *enumerator == *b.as<Enumerator>();
  if (auto const* file = a.as<FileUrl>()) return *file == *b.as<FileUrl>();
  if (auto const* alias = a.as<Alias>()) return *alias == *b.as<Alias>();
  if (auto const* script = a.as<ScriptReference>()) return *script == *b.as<ScriptReference>();
  if (auto const* handler = a.as<HandlerValue>()) return handler->handler == b.as<HandlerValue>()->handler;
  if (auto const* measure = a.as<Measure>()) return *measure == *b.as<Measure>();
  if (auto const* date = a.as<Date>()) return *date->seconds == *b.as<Date>()->seconds;
  return a.isNull() || a.as<Language>() != nullptr;
}

/// -1, 0 or 1
[[nodiscard]] int order(Datum const& left, Datum const& right, RunState& state) {
  if (isNumber(left)) {
    Datum const number = coerce(right, "nmbr"_code, state);
    double const difference = numberOf(left) - numberOf(number);
    return difference < 0 ? -1 : difference > 0 ? 1 : 0;
  }
  if (auto const* text = left.as<Text>()) {
    Datum const other = coerce(right, "ctxt"_code, state);
    std::string const x = folded(text->view(), state.considerations);
    return orderOfTexts(x, folded(other.as<Text>()->view(), state.considerations), state.considerations);
  }
  if (auto const* date = left.as<Date>()) {
    Datum const other = coerce(right, "ldt "_code, state);
    std::int64_t const difference = *date->seconds - *other.as<Date>()->seconds;
    return difference < 0 ? -1 : difference > 0 ? 1 : 0;
  }
  raiseCannotMake(left, "nmbr"_code, state);
}

enum class Place { anywhere, start, end };

[[nodiscard]] bool listHas(ListObject const& list, ListObject const& part, Place place, RunState const& state) {
  std::size_t const count = part.items.size();
  if (count > list.items.size()) return false;
  std::size_t const last = list.items.size() - count;
  auto const matchesAt = [&](std::size_t at) {
    for (std::size_t i = 0; i < count; ++i) {
      if (!isEqual(dereferenced(list.items[at + i]), dereferenced(part.items[i]), state)) return false;
    }
    return true;
  };
  if (place == Place::start) return matchesAt(0);
  if (place == Place::end) return matchesAt(last);
  for (std::size_t at = 0; at <= last; ++at) {
    if (matchesAt(at)) return true;
  }
  return false;
}

[[nodiscard]] bool has(Datum const& whole, Datum const& part, Place place, RunState& state) {
  if (auto const* list = whole.as<ListReference>()) {
    Datum const other = coerce(part, "list"_code, state);
    state.spend((*list)->items.size());
    return listHas(**list, **other.as<ListReference>(), place, state);
  }
  if (auto const* record = whole.as<RecordReference>()) {
    auto const* other = part.as<RecordReference>();
    if (other == nullptr) raiseCannotMake(part, "reco"_code, state);
    return std::ranges::all_of((*other)->fields, [&](auto const& field) {
      Datum const* mine = (*record)->find(field.first);
      return mine != nullptr && isEqual(*mine, field.second, state);
    });
  }
  Datum const wholeText = coerce(whole, "ctxt"_code, state);
  Datum const partText = coerce(part, "ctxt"_code, state);
  std::string const x = folded(wholeText.as<Text>()->view(), state.considerations);
  std::string const y = folded(partText.as<Text>()->view(), state.considerations);
  state.spend(x.size() / 64);
  if (place == Place::start) return x.starts_with(y) && endsAtCharacter(x, y.size());
  if (place == Place::end) return x.ends_with(y);
  return textContains(x, y);
}

}  // namespace

CodePoint codePointAt(std::string_view text, std::size_t position) {
  auto const byte = [text, position](std::size_t i) -> std::uint32_t {
    return position + i < text.size() ? static_cast<unsigned char>(text[position + i]) : 0U;
  };
  std::uint32_t const first = byte(0);
  if (first < 0xC0U) return {first, 1};
  std::size_t const length = first < 0xE0U ? 2 : first < 0xF0U ? 3 : 4;
  std::uint32_t value = first & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0U) != 0x80U) return {first, 1};
    value = (value << 6U) | (byte(i) & 0x3FU);
  }
  return {value, length};
}

std::string folded(std::string_view text, Considerations considerations) {
  bool const isPlain = isAscii(text);
  std::string result = isPlain ? std::string(text) : unicode::canonicallyDecomposed(text);
  if (ignores(considerations, Considerations::kIgnoreCase)) {
    if (isPlain) {
      result = lowercaseKey(result);
    } else {
      // Folding may compose what decomposition took apart, and the other way round.
      result = unicode::canonicallyDecomposed(unicode::caseFolded(result));
    }
  }
  constexpr std::uint32_t kOthers = Considerations::kIgnoreCase | Considerations::kConsiderNumericStrings;
  bool const ignoresMore = (considerations.bits & ~kOthers) != 0;
  return ignoresMore ? withoutIgnored(result, considerations) : result;
}

bool isEqual(Datum const& a, Datum const& b, RunState const& state) {
  return isEqualAt(a, b, state, 0);
}

bool compare(ComparisonOperator operation, Datum const& left, Datum const& right, RunState& state) {
  switch (operation) {
    case ComparisonOperator::equal:
      return isEqual(left, right, state);
    case ComparisonOperator::notEqual:
      return !isEqual(left, right, state);
    case ComparisonOperator::less:
      return order(dereferenced(left), right, state) < 0;
    case ComparisonOperator::lessOrEqual:
      return order(dereferenced(left), right, state) <= 0;
    case ComparisonOperator::greater:
      return order(dereferenced(left), right, state) > 0;
    case ComparisonOperator::greaterOrEqual:
      return order(dereferenced(left), right, state) >= 0;
    case ComparisonOperator::contains:
      return has(dereferenced(left), dereferenced(right), Place::anywhere, state);
    case ComparisonOperator::notContains:
      return !has(dereferenced(left), dereferenced(right), Place::anywhere, state);
    case ComparisonOperator::isIn:
      return has(dereferenced(right), dereferenced(left), Place::anywhere, state);
    case ComparisonOperator::isNotIn:
      return !has(dereferenced(right), dereferenced(left), Place::anywhere, state);
    case ComparisonOperator::startsWith:
      return has(dereferenced(left), dereferenced(right), Place::start, state);
    case ComparisonOperator::endsWith:
      return has(dereferenced(left), dereferenced(right), Place::end, state);
  }
  return false;
}

}  // namespace morla::applescript
