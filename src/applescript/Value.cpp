#include "applescript/Value.h"

namespace morla::applescript {

bool Value::isMissing() const {
  auto const* type = as<TypeCode>();
  return type != nullptr && type->code == "msng"_code;
}

static bool operator==(RecordField const& a, RecordField const& b) {
  return a.key == b.key && a.value == b.value;
}

bool operator==(Value const& a, Value const& b) {
  if (a.data.index() != b.data.index()) return false;
  if (auto const* list = a.as<List>()) return *list == *b.as<List>();
  if (auto const* record = a.as<Record>()) return *record == *b.as<Record>();
  if (auto const* pointer = a.as<SpecifierPointer>()) {
    Specifier const& x = **pointer;
    Specifier const& y = **b.as<SpecifierPointer>();
    return x.wanted == y.wanted && x.form == y.form && x.selector == y.selector && x.container == y.container;
  }
  return std::visit(
      [&b]<typename T>(T const& held) {
        if constexpr (std::same_as<T, List> || std::same_as<T, Record> || std::same_as<T, SpecifierPointer>) {
          return false;
        } else {
          return held == *b.as<T>();
        }
      },
      a.data);
}

std::string_view textOf(KeyForm form) {
  switch (form) {
    case KeyForm::property:
      return "prop";
    case KeyForm::index:
      return "indx";
    case KeyForm::name:
      return "name";
    case KeyForm::id:
      return "ID  ";
    case KeyForm::relative:
      return "rele";
    case KeyForm::range:
      return "rang";
    case KeyForm::test:
      return "test";
    case KeyForm::every:
      return "every";
  }
  return "";
}

}  // namespace morla::applescript
