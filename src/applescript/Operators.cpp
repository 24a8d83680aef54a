#include "applescript/Operators.h"

#include <cmath>

#include "applescript/Calendar.h"
#include "applescript/Coercion.h"
#include "applescript/Describe.h"
#include "applescript/ScriptError.h"

namespace morla::applescript {
namespace {

/// Integers beyond this become real.
constexpr std::int64_t kLargestInteger = 536870911;

[[nodiscard]] Datum integerOrReal(std::int64_t value) {
  if (value > kLargestInteger || value < -kLargestInteger) return static_cast<double>(value);
  return value;
}

[[nodiscard]] Datum real(double value) {
  if (!std::isfinite(value)) raise(errors::kNumberTooLarge, "The result of a numeric operation was too large.");
  return value;
}

/// A whole number as an integer where it fits.
[[nodiscard]] Datum whole(double value) {
  if (std::abs(value) <= static_cast<double>(kLargestInteger)) return static_cast<std::int64_t>(value);
  return real(value);
}

[[nodiscard]] double asReal(Datum const& number) {
  auto const* integer = number.as<std::int64_t>();
  return integer == nullptr ? *number.as<double>() : static_cast<double>(*integer);
}

/// A date and a number of seconds, or the seconds between two dates; nothing for other operands.
[[nodiscard]] std::optional<Datum> calculatedDate(BinaryOperator operation, Datum const& left, Datum const& right,
                                                  RunState& state) {
  auto const* date = left.as<Date>();
  auto const* other = right.as<Date>();
  if (date == nullptr) {
    if (other == nullptr || operation != BinaryOperator::add) return std::nullopt;
    return calculatedDate(operation, right, left, state);
  }
  if (operation == BinaryOperator::subtract && other != nullptr) {
    return integerOrReal(*date->seconds - *other->seconds);
  }
  if (operation != BinaryOperator::add && operation != BinaryOperator::subtract) return std::nullopt;
  double const seconds = asReal(coerce(right, "nmbr"_code, state));
  double const moment = static_cast<double>(*date->seconds) + (operation == BinaryOperator::add ? seconds : -seconds);
  if (!isDateInRange(moment)) raise(errors::kNumberTooLarge, "The result of a date operation was too large.");
  return Date(static_cast<std::int64_t>(moment));
}

[[nodiscard]] Datum calculated(BinaryOperator operation, Datum const& left, Datum const& right, RunState& state) {
  if (left.as<Date>() != nullptr || right.as<Date>() != nullptr) {
    if (std::optional<Datum> result = calculatedDate(operation, left, right, state)) return *std::move(result);
  }
  Datum const a = coerce(left, "nmbr"_code, state);
  Datum const b = coerce(right, "nmbr"_code, state);
  auto const* i = a.as<std::int64_t>();
  auto const* j = b.as<std::int64_t>();
  // Integers fit into 30 bits wherever they come from, so nothing overflows here.
  bool const areIntegers = i != nullptr && j != nullptr;
  double const x = asReal(a);
  double const y = asReal(b);
  bool const divides = operation == BinaryOperator::divide || operation == BinaryOperator::integerDivide ||
                       operation == BinaryOperator::modulo;
  if (divides && y == 0) {
    raise(errors::kDivisionByZero, "Can’t divide " + sourceText(a, state) + " by zero.", a);
  }
  switch (operation) {
    case BinaryOperator::add:
      return areIntegers ? integerOrReal(*i + *j) : real(x + y);
    case BinaryOperator::subtract:
      return areIntegers ? integerOrReal(*i - *j) : real(x - y);
    case BinaryOperator::multiply:
      return areIntegers ? integerOrReal(*i * *j) : real(x * y);
    case BinaryOperator::divide:
      return real(x / y);
    case BinaryOperator::integerDivide:
      return areIntegers ? Datum(*i / *j) : whole(std::trunc(x / y));
    case BinaryOperator::modulo:
      return areIntegers ? Datum(*i % *j) : real(std::fmod(x, y));
    case BinaryOperator::power:
      return real(std::pow(x, y));
    case BinaryOperator::concatenate:
    case BinaryOperator::logicalAnd:
    case BinaryOperator::logicalOr:
      break;
  }
  raise(errors::kGeneral, "No operator of numbers.");
}

/// Text when the left side is text, a record of two records, else a list: `5 & "a"` is {5, "a"}.
[[nodiscard]] Datum concatenated(Datum const& left, Datum const& right, RunState& state) {
  if (auto const* text = left.as<Text>()) {
    Datum const more = coerce(right, "ctxt"_code, state);
    state.spend(more.as<Text>()->size() / 64);
    return state.append(*text, more.as<Text>()->view());
  }
  auto const* a = left.as<RecordReference>();
  auto const* b = right.as<RecordReference>();
  if (a != nullptr && b != nullptr) {
    RecordObject::Fields fields = (*a)->fields;
    RecordReference const joined = state.heap.makeRecord(std::move(fields));
    for (auto const& field : (*b)->fields) {
      if (joined->find(field.first) != nullptr) continue;
      joined->account(sizeof(field));
      joined->fields.push_back(field);
    }
    return joined;
  }
  std::vector<Datum> items;
  for (Datum const* side : {&left, &right}) {
    auto const* list = side->as<ListReference>();
    if (list == nullptr) {
      items.push_back(*side);
    } else {
      items.insert(items.end(), (*list)->items.begin(), (*list)->items.end());
    }
  }
  return state.makeList(std::move(items));
}

}  // namespace

Datum applied(BinaryOperator operation, Datum const& left, Datum const& right, RunState& state) {
  Datum const a = dereferenced(left);
  Datum const b = dereferenced(right);
  return operation == BinaryOperator::concatenate ? concatenated(a, b, state) : calculated(operation, a, b, state);
}

void appendTo(ListObject& list, Datum const& more, RunState& state) {
  auto const* items = more.as<ListReference>();
  std::size_t const count = items == nullptr ? 1 : (*items)->items.size();
  if (list.items.size() + count > state.limits.listItems) raise(errors::kValueTooLarge, "The list is too large.");
  state.spend(count);
  list.account(count * sizeof(Datum));
  if (items == nullptr) {
    list.items.push_back(more);
  } else {
    list.items.insert(list.items.end(), (*items)->items.begin(), (*items)->items.end());
  }
}

Datum negated(Datum const& operand, RunState& state) {
  Datum const number = coerce(operand, "nmbr"_code, state);
  if (auto const* integer = number.as<std::int64_t>()) return -*integer;
  return -*number.as<double>();
}

}  // namespace morla::applescript
