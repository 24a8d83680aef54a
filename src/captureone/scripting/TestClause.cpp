#include "captureone/scripting/TestClause.h"

#include <algorithm>
#include <optional>
#include <string>

#include "base/unicode/Unicode.h"

namespace morla::captureone {

using applescript::Code;
using applescript::Considerations;
using applescript::Enumerator;
using applescript::EventError;
using applescript::List;
using applescript::Record;
using applescript::Value;

namespace {

using Verdict = std::variant<bool, EventError>;

Value const* field(Record const& record, Code key) {
  for (auto const& each : record) {
    if (each.key == applescript::RecordKey(key)) return &each.value;
  }
  return nullptr;
}

std::optional<Code> enumerator(Record const& record, Code key) {
  auto const* value = field(record, key);
  auto const* held = value == nullptr ? nullptr : value->as<Enumerator>();
  return held == nullptr ? std::nullopt : std::optional(held->code);
}

std::optional<double> numberOf(Value const& value) {
  if (auto const* integer = value.as<std::int64_t>()) return static_cast<double>(*integer);
  if (auto const* real = value.as<double>()) return *real;
  return {};
}

/// Texts that count as equal become the same bytes.
std::string comparable(std::string const& text, Considerations considerations) {
  bool const ignoresCase = (considerations.bits & Considerations::kIgnoreCase) != 0;
  return unicode::canonicallyDecomposed(ignoresCase ? unicode::caseFolded(text) : text);
}

bool areEqual(Value const& a, Value const& b, Considerations considerations) {
  if (auto const first = numberOf(a)) {
    // Neither is the sum of anything, so they can be compared as they are.
    auto const second = numberOf(b);
    return second && !(*first < *second) && !(*second < *first);
  }
  auto const* first = a.as<std::string>();
  auto const* second = b.as<std::string>();
  if (first == nullptr || second == nullptr) return a == b;
  return comparable(*first, considerations) == comparable(*second, considerations);
}

/// Below 0, 0 or above; nothing where there is no order.
std::optional<int> order(Value const& a, Value const& b, Considerations considerations) {
  auto const sign = [](auto const& first, auto const& second) { return first < second ? -1 : second < first ? 1 : 0; };
  if (auto const first = numberOf(a)) {
    auto const second = numberOf(b);
    return second ? std::optional(sign(*first, *second)) : std::nullopt;
  }
  auto const* first = a.as<std::string>();
  auto const* second = b.as<std::string>();
  if (first == nullptr || second == nullptr) return {};
  return sign(comparable(*first, considerations), comparable(*second, considerations));
}

/// One of the relations that are about parts; nothing where the values have none.
std::optional<bool> hasPart(Code relation, Value const& whole, Value const& part, Considerations considerations) {
  if (auto const* list = whole.as<List>()) {
    auto const isPart = [&](Value const& each) { return areEqual(each, part, considerations); };
    if (relation == Code("cont")) return std::ranges::any_of(*list, isPart);
    if (relation == Code("bgwt")) return !list->empty() && isPart(list->front());
    return !list->empty() && isPart(list->back());
  }
  auto const* text = whole.as<std::string>();
  auto const* piece = part.as<std::string>();
  if (text == nullptr || piece == nullptr) return {};
  auto const in = comparable(*text, considerations);
  auto const what = comparable(*piece, considerations);
  if (relation == Code("cont")) return in.find(what) != std::string::npos;
  return relation == Code("bgwt") ? in.starts_with(what) : in.ends_with(what);
}

std::optional<bool> compare(Code relation, Content const& left, Content const& right, Considerations considerations) {
  auto const* a = std::get_if<Value>(&left);
  auto const* b = std::get_if<Value>(&right);
  if (relation == Code("=")) return a != nullptr && b != nullptr ? areEqual(*a, *b, considerations) : left == right;
  if (a == nullptr || b == nullptr) return {};
  if (relation == Code("cont") || relation == Code("bgwt") || relation == Code("ends")) {
    return hasPart(relation, *a, *b, considerations);
  }
  auto const sign = order(*a, *b, considerations);
  if (!sign) return {};
  if (relation == Code("<")) return *sign < 0;
  if (relation == Code("<=")) return *sign <= 0;
  if (relation == Code(">")) return *sign > 0;
  if (relation == Code(">=")) return *sign >= 0;
  return {};
}

Verdict comparison(Record const& test, OperandReader const& read, Considerations considerations) {
  auto const relation = enumerator(test, Code("relo"));
  auto const* left = field(test, Code("obj1"));
  auto const* right = field(test, Code("obj2"));
  if (!relation || left == nullptr || right == nullptr) return failures::wrongType(test, "test");
  auto const first = read(*left);
  if (auto const* error = std::get_if<EventError>(&first)) return *error;
  auto const second = read(*right);
  if (auto const* error = std::get_if<EventError>(&second)) return *error;
  auto const result = compare(*relation, std::get<Content>(first), std::get<Content>(second), considerations);
  if (!result) return failures::wrongType(*right, "the other operand’s type");
  return *result;
}

}  // namespace

Verdict holds(Value const& test, OperandReader const& read, Considerations considerations) {
  auto const* record = test.as<Record>();
  if (record == nullptr) return failures::wrongType(test, "test");
  auto const logic = enumerator(*record, Code("logc"));
  if (!logic) return comparison(*record, read, considerations);
  auto const* termsField = field(*record, Code("term"));
  auto const* terms = termsField == nullptr ? nullptr : termsField->as<List>();
  if (terms == nullptr || terms->empty()) return failures::wrongType(test, "test");
  bool const isOr = *logic == Code("OR");
  if (!isOr && *logic != Code("AND") && *logic != Code("NOT")) return failures::wrongType(test, "test");
  for (auto const& each : *terms) {
    auto const verdict = holds(each, read, considerations);
    auto const* isTrue = std::get_if<bool>(&verdict);
    if (isTrue == nullptr) return verdict;
    if (*logic == Code("NOT")) return !*isTrue;
    if (*isTrue == isOr) return isOr;
  }
  return !isOr;
}

}  // namespace morla::captureone
