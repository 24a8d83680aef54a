#include "platform/linux/scripting/tool/ValueText.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <variant>

#include "applescript/Interpreter.h"

namespace morla::linux {

using namespace applescript;

static std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (char const c : text) {
    if (c == '"' || c == '\\') result += '\\';
    result += c;
  }
  return result + '"';
}

static std::string guillemets(std::string_view kind, std::string_view code) {
  return "«" + std::string(kind) + " " + std::string(code) + "»";
}

static bool isIdentifier(std::string_view text) {
  auto const isWordCharacter = [](char c) { return c == '_' || std::isalnum(static_cast<unsigned char>(c)) != 0; };
  return !text.empty() && std::isdigit(static_cast<unsigned char>(text.front())) == 0 &&
         std::ranges::all_of(text, isWordCharacter);
}

static std::string keyText(RecordKey const& key) {
  if (auto const* const code = std::get_if<Code>(&key)) return guillemets("property", code->text());
  auto const& name = std::get<std::string>(key);
  return isIdentifier(name) ? name : "|" + name + "|";
}

static std::string fieldsText(Record const& record) {
  std::string text;
  for (auto const& [key, value] : record) {
    if (!text.empty()) text += ", ";
    text += keyText(key) + ":" + sourceForm(value);
  }
  return text;
}

/// The bounds of a range, or what is left of one that has none.
static std::string rangeText(Value const& selector) {
  auto const* const record = selector.as<Record>();
  if (record == nullptr || record->size() != 2) return sourceForm(selector);
  return sourceForm(record->front().value) + " thru " + sourceForm(record->back().value);
}

static std::string pickText(Specifier const& specifier) {
  std::string const wanted = guillemets("class", specifier.wanted.text());
  switch (specifier.form) {
    case KeyForm::property: {
      auto const* const property = specifier.selector.as<TypeCode>();
      return property == nullptr ? sourceForm(specifier.selector) : guillemets("property", property->code.text());
    }
    case KeyForm::index:
    case KeyForm::name:
      return wanted + " " + sourceForm(specifier.selector);
    case KeyForm::id:
      return wanted + " id " + sourceForm(specifier.selector);
    case KeyForm::relative: {
      auto const* const side = specifier.selector.as<Enumerator>();
      return wanted + (side != nullptr && side->code == "prev"_code ? " before" : " after");
    }
    case KeyForm::range:
      return wanted + " " + rangeText(specifier.selector);
    case KeyForm::test:
      return "every " + wanted + " whose " + sourceForm(specifier.selector);
    case KeyForm::every:
      return "every " + wanted;
  }
  return wanted;
}

namespace {

struct SourceWriter {
  std::string operator()(Null) const { return "null"; }
  std::string operator()(bool value) const { return value ? "true" : "false"; }
  std::string operator()(std::int64_t value) const { return std::to_string(value); }
  std::string operator()(double value) const { return stringValue(value).value_or(""); }
  std::string operator()(std::string const& text) const { return quoted(text); }
  std::string operator()(TypeCode type) const {
    return type.code == "msng"_code ? "missing value" : guillemets("class", type.code.text());
  }
  std::string operator()(Enumerator value) const { return guillemets("constant", "****" + value.code.text()); }
  std::string operator()(FileUrl const& file) const { return "POSIX file " + quoted(file.path); }
  std::string operator()(Alias const& alias) const { return "POSIX file " + quoted(alias.path) + " as alias"; }
  std::string operator()(List const& list) const {
    std::string text;
    for (std::size_t i = 0; i < list.size(); ++i) text += (i == 0 ? "" : ", ") + sourceForm(list[i]);
    return "{" + text + "}";
  }
  std::string operator()(Record const& record) const { return "{" + fieldsText(record) + "}"; }
  std::string operator()(SpecifierPointer const& specifier) const {
    std::string const pick = pickText(*specifier);
    if (specifier->container.isNull()) return pick;
    return pick + (specifier->form == KeyForm::relative ? " " : " of ") + sourceForm(specifier->container);
  }
};

}  // namespace

std::string sourceForm(Value const& value) {
  return std::visit(SourceWriter{}, value.data);
}

std::string humanForm(Value const& value) {
  if (auto const* const text = value.as<std::string>()) return *text;
  if (auto const* const file = value.as<FileUrl>()) return file->path;
  if (auto const* const alias = value.as<Alias>()) return alias->path;
  if (auto const* const record = value.as<Record>()) return fieldsText(*record);
  auto const* const list = value.as<List>();
  if (list == nullptr) return sourceForm(value);
  std::string text;
  for (std::size_t i = 0; i < list->size(); ++i) text += (i == 0 ? "" : ", ") + humanForm((*list)[i]);
  return text;
}

}  // namespace morla::linux
