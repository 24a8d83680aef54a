#include "applescript/Describe.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "applescript/Calendar.h"
#include "applescript/Coercion.h"
#include "applescript/ScriptInstance.h"
#include "applescript/Units.h"

namespace morla::applescript {
namespace {

constexpr std::size_t kMaximumDepth = 20;  // deeper values are cut short: a message is for people

class Describer {
 public:
  explicit Describer(RunState const& state) : state_(&state) {}

  [[nodiscard]] std::string text(Datum const& datum, std::size_t depth) const {
    if (depth > kMaximumDepth) return "…";
    return std::visit([this, depth](auto const& held) { return of(held, depth + 1); }, datum.data);
  }

 private:
  [[nodiscard]] std::string of(Null, std::size_t) const { return "null"; }
  [[nodiscard]] std::string of(bool value, std::size_t) const { return value ? "true" : "false"; }
  [[nodiscard]] std::string of(std::int64_t value, std::size_t) const { return std::to_string(value); }
  [[nodiscard]] std::string of(double value, std::size_t) const { return textOfReal(value); }
  [[nodiscard]] std::string of(Text const& value, std::size_t) const { return quoted(value.view()); }
  [[nodiscard]] std::string of(TypeCode value, std::size_t) const { return typeName(value.code, *state_); }
  [[nodiscard]] std::string of(Enumerator value, std::size_t) const {
    if (auto name = state_->applications.enumeratorName(value.code)) return *name;
    return "«constant ****" + value.code.text() + "»";
  }
  [[nodiscard]] std::string of(FileUrl const& value, std::size_t) const {
    return "file " + quoted(hfsPath(value.path));
  }
  [[nodiscard]] std::string of(Alias const& value, std::size_t) const { return "alias " + quoted(hfsPath(value.path)); }
  [[nodiscard]] std::string of(ListReference const& value, std::size_t depth) const {
    std::string result = "{";
    for (Datum const& item : value->items) {
      if (result.size() > 1) result += ", ";
      result += text(item, depth);
    }
    return result + "}";
  }
  [[nodiscard]] std::string of(RecordReference const& value, std::size_t depth) const {
    std::string result = "{";
    for (auto const& [key, item] : value->fields) {
      if (result.size() > 1) result += ", ";
      auto const* code = std::get_if<Code>(&key);
      result += code == nullptr ? label(std::get<std::string>(key)) : nameOfProperty(*code);
      result += ":" + text(item, depth);
    }
    return result + "}";
  }
  [[nodiscard]] std::string of(ItemReference const& value, std::size_t depth) const {
    return "item " + std::to_string(value.index + 1) + " of " + of(value.list, depth);
  }
  [[nodiscard]] std::string of(VariableReference const& value, std::size_t depth) const {
    return text(value.variables->slots[value.slot].value, depth);
  }
  [[nodiscard]] std::string of(PropertyReference const& value, std::size_t depth) const {
    auto const* code = std::get_if<Code>(&value->key);
    std::string const name = code == nullptr ? std::get<std::string>(value->key) : nameOfProperty(*code);
    return name + " of " + text(value->owner, depth);
  }
  [[nodiscard]] std::string of(ScriptReference const& value, std::size_t) const {
    return value->code->name.empty() ? "«script»" : "«script " + value->code->name + "»";
  }
  [[nodiscard]] std::string of(HandlerValue const& value, std::size_t) const {
    return "«handler " + value.handler->name + "»";
  }
  [[nodiscard]] std::string of(Language, std::size_t) const { return "current application"; }
  [[nodiscard]] std::string of(Date const& value, std::size_t) const { return "date " + quoted(dateText(value)); }
  [[nodiscard]] std::string of(Measure const& value, std::size_t) const {
    return typeName(value.unit, *state_) + " " + textOfReal(value.amount);
  }
  [[nodiscard]] std::string of(ActivationReference const&, std::size_t) const { return "null"; }
  [[nodiscard]] std::string of(InsertionPoint const& value, std::size_t depth) const {
    static constexpr auto kWords = std::to_array<std::pair<std::string_view, std::string_view>>(
        {{"bgng", "beginning of "}, {"end ", "end of "}, {"befo", "before "}, {"afte", "after "}});
    for (auto const& [code, words] : kWords) {
      if (value.position == Code(code)) return std::string(words) + text(*value.object, depth);
    }
    return text(*value.object, depth);
  }

  [[nodiscard]] std::string of(ApplicationObject const& value, std::size_t depth) const {
    ApplicationReference const& reference = value.application->reference;
    std::string const application =
        (reference.kind == ApplicationReference::Kind::name ? "application " : "application id ") +
        quoted(reference.text);
    if (value.specifier == nullptr) return application;
    return specifier(*value.specifier, *value.application, depth);
  }

  /// The innermost application is left out, as messages name it already.
  [[nodiscard]] std::string specifier(Specifier const& object, TargetApplication const& application,
                                      std::size_t depth) const {
    if (depth > kMaximumDepth) return "…";
    std::string result = part(object, application, depth);
    if (auto const* container = object.container.as<SpecifierPointer>()) {
      result += " of " + specifier(**container, application, depth + 1);
    }
    return result;
  }

  [[nodiscard]] std::string part(Specifier const& object, TargetApplication const& application,
                                 std::size_t depth) const {
    if (object.form == KeyForm::property) {
      auto const* type = object.selector.as<TypeCode>();
      return type == nullptr ? "property" : propertyName(type->code, application);
    }
    std::string const name = className(object.wanted, application);
    switch (object.form) {
      case KeyForm::every:
        return "every " + name;
      case KeyForm::test:
        return "every " + name + " whose …";
      case KeyForm::id:
        return name + " id " + plain(object.selector, application, depth);
      case KeyForm::range: {
        auto const* record = object.selector.as<Record>();
        if (record == nullptr || record->size() != 2) return "every " + name;
        return name + " " + plain((*record)[0].value, application, depth) + " thru " +
               plain((*record)[1].value, application, depth);
      }
      case KeyForm::relative:
        return name + " beside";
      case KeyForm::property:
      case KeyForm::index:
      case KeyForm::name:
        break;
    }
    return name + " " + plain(object.selector, application, depth);
  }

  [[nodiscard]] std::string plain(Value const& value, TargetApplication const& application, std::size_t depth) const {
    if (auto const* text = value.as<std::string>()) return quoted(*text);
    if (auto const* integer = value.as<std::int64_t>()) return std::to_string(*integer);
    if (auto const* object = value.as<SpecifierPointer>()) return specifier(**object, application, depth + 1);
    return stringValue(value).value_or("…");
  }

  [[nodiscard]] static std::string className(Code code, TargetApplication const& application) {
    if (application.terms != nullptr) {
      if (auto name = application.terms->className(code)) return *name;
    }
    return standardTerms().className(code).value_or("«class " + code.text() + "»");
  }
  [[nodiscard]] std::string propertyName(Code code, TargetApplication const& application) const {
    if (application.terms != nullptr) {
      if (auto name = application.terms->propertyName(code)) return *name;
    }
    return nameOfProperty(code);
  }
  /// Of what belongs to no application, but may have come from one.
  [[nodiscard]] std::string nameOfProperty(Code code) const {
    if (auto name = standardTerms().propertyName(code)) return *name;
    return state_->applications.propertyName(code).value_or("«property " + code.text() + "»");
  }

  /// Between bars where it could not be read back without them.
  [[nodiscard]] static std::string label(std::string const& name) {
    auto const isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; };
    bool const isWord = !name.empty() && isLetter(name.front()) &&
                        std::ranges::all_of(name, [&](char c) { return isLetter(c) || (c >= '0' && c <= '9'); });
    return isWord ? name : "|" + name + "|";
  }

  [[nodiscard]] static std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (char const c : text) {
      if (c == '"' || c == '\\') result += '\\';
      result += c;
    }
    return result + "\"";
  }

  RunState const* state_;
};

}  // namespace

std::string sourceText(Datum const& datum, RunState const& state) {
  return Describer(state).text(datum, 0);
}

std::string textOfReal(double number) {
  if (!std::isfinite(number)) return std::isnan(number) ? "NaN" : number < 0 ? "-INF" : "INF";
  if (number == 0) return "0.0";
  std::array<char, 40> buffer{};
  double const size = std::abs(number);
  auto const withoutZeros = [](std::string digits) {
    while (digits.ends_with('0') && !digits.ends_with(".0")) digits.pop_back();
    return digits;
  };
  // Fifteen digits are what a double always keeps.
  constexpr int kDigits = 15;
  std::snprintf(buffer.data(), buffer.size(), "%.*e", kDigits - 1, number);
  std::string const digits = buffer.data();
  std::size_t const exponentAt = digits.find('e');
  int const exponent = std::stoi(digits.substr(exponentAt + 1));
  if (size >= 10000 || size <= 0.0001 || exponent >= 4) {
    return withoutZeros(digits.substr(0, exponentAt)) + "E" + (exponent < 0 ? "-" : "+") +
           std::to_string(std::abs(exponent));
  }
  // Twelve places behind the point, so that 0.1 + 0.2 is 0.3.
  constexpr int kPlaces = 12;
  std::snprintf(buffer.data(), buffer.size(), "%.*f", std::min(kPlaces, kDigits - 1 - exponent), number);
  return withoutZeros(buffer.data());
}

std::string typeName(Code type, RunState const& state) {
  if (type == "msng"_code) return "missing value";
  if (type == "alis"_code) return "alias";
  if (type == "TEXT"_code || type == "utxt"_code || type == "ctxt"_code) return "text";
  if (Unit const* unit = unitWithCode(type)) return std::string(unit->name);
  if (auto name = standardTerms().className(type)) return *name;
  if (auto name = state.applications.className(type)) return *name;
  return "«class " + type.text() + "»";
}

}  // namespace morla::applescript
