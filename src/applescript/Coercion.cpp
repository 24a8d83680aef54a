#include "applescript/Coercion.h"

#include <charconv>
#include <cmath>

#include "applescript/Calendar.h"
#include "applescript/DateProperties.h"
#include "applescript/Describe.h"
#include "applescript/ScriptError.h"
#include "applescript/ScriptInstance.h"
#include "applescript/Units.h"

namespace morla::applescript {
namespace {

/// What the start-up disk is called in HFS paths.
constexpr std::string_view kStartUpDisk = "Macintosh HD";
constexpr std::string_view kVolumes = "/Volumes/";
constexpr double kLargestInteger = 536870911;

/// "12", " -3.5 ", "1.0E+4"; a number without fraction and exponent is an integer.
[[nodiscard]] std::optional<Datum> numberIn(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  if (text.starts_with('+')) text.remove_prefix(1);
  // from_chars would read "inf", "nan" and a second sign as well.
  if (text.find_first_not_of("0123456789+-.eE") != std::string_view::npos) return std::nullopt;
  std::int64_t integer = 0;
  char const* end = text.data() + text.size();
  auto const [integerEnd, integerProblem] = std::from_chars(text.data(), end, integer);
  bool const isSmall =
      integer <= static_cast<std::int64_t>(kLargestInteger) && integer >= -static_cast<std::int64_t>(kLargestInteger);
  if (integerProblem == std::errc() && integerEnd == end && isSmall) return integer;
  double real = 0;
  auto const [realEnd, realProblem] = std::from_chars(text.data(), end, real);
  if (realProblem == std::errc() && realEnd == end) return real;
  return std::nullopt;
}

[[nodiscard]] bool isTextType(Code type) {
  return type == "ctxt"_code || type == "TEXT"_code || type == "utxt"_code || type == "utf8"_code;
}

[[nodiscard]] std::optional<Datum> toInteger(Datum const& datum) {
  if (auto const* boolean = datum.as<bool>()) return std::int64_t{*boolean ? 1 : 0};
  if (auto const month = monthNumber(datum)) return *month;
  if (auto const weekday = weekdayNumber(datum)) return *weekday;
  std::optional<Datum> const number = coercedToNumber(datum);
  if (!number) return std::nullopt;
  if (number->as<std::int64_t>() != nullptr) return number;
  double const rounded = std::nearbyint(*number->as<double>());
  if (!(std::abs(rounded) <= kLargestInteger)) return std::nullopt;
  return static_cast<std::int64_t>(rounded);
}

[[nodiscard]] std::optional<Datum> toMeasure(Datum const& datum, Code unit) {
  if (auto const* measure = datum.as<Measure>()) {
    std::optional<double> const amount = convertedMeasure(*measure, unit);
    if (!amount) return std::nullopt;
    return Measure{unit, *amount};
  }
  std::optional<Datum> const number = coercedToNumber(datum);
  if (!number) return std::nullopt;
  auto const* integer = number->as<std::int64_t>();
  return Measure{unit, integer == nullptr ? *number->as<double>() : static_cast<double>(*integer)};
}

[[nodiscard]] std::optional<Datum> toBoolean(Datum const& datum) {
  if (datum.as<bool>() != nullptr) return datum;
  if (auto const* text = datum.as<Text>()) {
    std::string const key = lowercaseKey(text->view());
    if (key == "true") return true;
    if (key == "false") return false;
  }
  if (auto const* integer = datum.as<std::int64_t>()) {
    if (*integer == 0 || *integer == 1) return *integer == 1;
  }
  return std::nullopt;
}

[[nodiscard]] std::optional<std::string> filePath(Datum const& datum) {
  if (auto const* file = datum.as<FileUrl>()) return file->path;
  if (auto const* alias = datum.as<Alias>()) return alias->path;
  if (auto const* text = datum.as<Text>()) return posixPath(text->string());
  return std::nullopt;
}

/// An alias is of something that exists; nothing else about coercions looks at the world.
[[nodiscard]] std::optional<Datum> toAlias(Datum const& datum, RunState& state) {
  std::optional<std::string> path = filePath(datum);
  if (!path || path->empty()) return std::nullopt;
  Host::FileKind const kind = state.host.fileKindAt(*path);
  if (kind == Host::FileKind::none) raise(errors::kFileNotFound, "File " + hfsPath(*path) + " wasn’t found.", datum);
  if (kind == Host::FileKind::folder && !path->ends_with('/')) *path += '/';
  return Alias{*path};
}

[[nodiscard]] std::optional<Datum> toDate(Datum const& datum, RunState& state) {
  auto const* text = datum.as<Text>();
  if (text == nullptr) return std::nullopt;
  std::optional<std::int64_t> const moment = parseDate(text->view(), state.host.now().seconds);
  if (!moment) raise(errors::kInvalidDate, "Invalid date and time " + sourceText(datum, state) + ".", datum);
  return Date(*moment);
}

[[nodiscard]] std::optional<Datum> toList(Datum const& datum, RunState& state) {
  if (datum.as<ListReference>() != nullptr) return datum;
  std::vector<Datum> items;
  if (auto const* record = datum.as<RecordReference>()) {
    for (auto const& field : (*record)->fields) items.push_back(field.second);
  } else {
    items.push_back(datum);
  }
  return state.makeList(std::move(items));
}

}  // namespace

std::string hfsPath(std::string const& posixPath) {
  std::string rest = posixPath;
  std::string result;
  if (rest.starts_with(kVolumes) && rest.size() > kVolumes.size()) {
    rest.erase(0, kVolumes.size());
  } else {
    result = std::string(kStartUpDisk) + ":";
    if (rest.starts_with('/')) rest.erase(0, 1);
  }
  // Either separator is an ordinary character in the other kind of path.
  for (char const c : rest) result += c == '/' ? ':' : c == ':' ? '/' : c;
  return result;
}

std::string posixPath(std::string const& hfsPath) {
  if (hfsPath.find(':') == std::string::npos) return hfsPath;
  std::size_t const end = hfsPath.find(':');
  std::string const volume = hfsPath.substr(0, end);
  std::string result = volume == kStartUpDisk ? "/" : std::string(kVolumes) + volume + "/";
  for (char const c : hfsPath.substr(end + 1)) result += c == ':' ? '/' : c == '/' ? ':' : c;
  return result;
}

[[nodiscard]] static Datum valueAt(PropertyPlace const& place) {
  Datum const* value = storageAt(place);
  if (value == nullptr) raise(errors::kNoSuchObject, "Can’t get a property.", place.owner);
  return *value;
}

Datum* storageAt(PropertyPlace const& place) {
  if (auto const* record = place.owner.as<RecordReference>()) return (*record)->find(place.key);
  if (auto const* script = place.owner.as<ScriptReference>()) return (*script)->find(place.key);
  return nullptr;
}

Datum dereferenced(Datum datum) {
  // A reference may lead to another one; a list's items can be set to references in a circle.
  for (int hops = 0; hops < 100; ++hops) {
    if (auto const* variable = datum.as<VariableReference>()) {
      Datum next = variable->variables->slots[variable->slot].value;
      datum = std::move(next);
      continue;
    }
    if (auto const* property = datum.as<PropertyReference>()) {
      Datum next = valueAt(**property);
      datum = std::move(next);
      continue;
    }
    auto const* reference = datum.as<ItemReference>();
    if (reference == nullptr) return datum;
    if (reference->index >= reference->list->items.size()) {
      raise(errors::kNoSuchObject, "Can’t get item " + std::to_string(reference->index + 1) + ".", datum);
    }
    Datum next = reference->list->items[reference->index];
    datum = std::move(next);
  }
  raise(errors::kNestedTooDeeply, "The reference leads nowhere.");
}

std::optional<Datum> coercedToNumber(Datum const& datum) {
  if (datum.as<std::int64_t>() != nullptr || datum.as<double>() != nullptr) return datum;
  if (auto const* text = datum.as<Text>()) return numberIn(text->view());
  if (auto const* measure = datum.as<Measure>()) return measure->amount;
  return std::nullopt;
}

std::optional<std::string> coercedToText(Datum const& datum, RunState& state, std::size_t depth) {
  if (depth > state.limits.depth) raise(errors::kNestedTooDeeply, "The value is nested too deeply.");
  state.spend();
  if (auto const* text = datum.as<Text>()) return text->string();
  if (auto const* integer = datum.as<std::int64_t>()) return std::to_string(*integer);
  if (auto const* real = datum.as<double>()) return textOfReal(*real);
  if (auto const* boolean = datum.as<bool>()) return *boolean ? "true" : "false";
  if (auto const* type = datum.as<TypeCode>()) return typeName(type->code, state);
  if (datum.as<Enumerator>() != nullptr) return sourceText(datum, state);
  if (auto const* file = datum.as<FileUrl>()) return hfsPath(file->path);
  if (auto const* alias = datum.as<Alias>()) return hfsPath(alias->path);
  if (auto const* date = datum.as<Date>()) return dateText(*date);
  if (auto const* measure = datum.as<Measure>()) return textOfReal(measure->amount);
  if (datum.as<ItemReference>() != nullptr) return coercedToText(dereferenced(datum), state, depth + 1);
  auto const* list = datum.as<ListReference>();
  if (list == nullptr) return std::nullopt;
  std::string const separator = state.delimiters.empty() ? std::string() : state.delimiters.front();
  std::string result;
  bool isFirst = true;
  for (Datum const& item : (*list)->items) {
    std::optional<std::string> const text = coercedToText(item, state, depth + 1);
    if (!text) return std::nullopt;
    if (!isFirst) result += separator;
    isFirst = false;
    result += *text;
    if (result.size() > state.limits.textBytes) raise(errors::kValueTooLarge, "The text is too large.");
  }
  return result;
}

std::optional<Datum> coerced(Datum const& original, Code type, RunState& state) {
  Datum const datum = dereferenced(original);
  if (datum.isNull()) return std::nullopt;
  if (type == "cobj"_code || type == "****"_code || type == classOf(datum)) return datum;
  if (isTextType(type)) {
    std::optional<std::string> text = coercedToText(datum, state);
    if (!text) return std::nullopt;
    return state.makeText(*std::move(text));
  }
  if (type == "list"_code) return toList(datum, state);
  std::optional<Datum> result;
  if (type == "long"_code) {
    result = toInteger(datum);
  } else if (type == "nmbr"_code) {
    result = datum.as<bool>() != nullptr ? toInteger(datum) : coercedToNumber(datum);
  } else if (type == "doub"_code) {
    if (auto const number = coercedToNumber(datum)) {
      auto const* integer = number->as<std::int64_t>();
      result = integer == nullptr ? *number : Datum(static_cast<double>(*integer));
    }
  } else if (type == "bool"_code) {
    result = toBoolean(datum);
  } else if (type == "alis"_code) {
    result = toAlias(datum, state);
  } else if (type == "furl"_code || type == "file"_code) {
    if (auto path = filePath(datum)) result = FileUrl{*path};
  } else if (type == "psxf"_code) {
    auto const* text = datum.as<Text>();
    if (text != nullptr) result = FileUrl{text->string()};
    if (text == nullptr && filePath(datum)) result = FileUrl{*filePath(datum)};
  } else if (type == "ldt "_code) {
    result = toDate(datum, state);
  } else if (type == "isot"_code && datum.as<Date>() != nullptr) {
    result = Datum(isoText(*datum.as<Date>()->seconds));
  } else if (unitWithCode(type) != nullptr) {
    result = toMeasure(datum, type);
  } else if (type == "cRGB"_code && datum.as<ListReference>() != nullptr) {
    result = datum;
  } else if (type == "enum"_code && datum.as<Enumerator>() != nullptr) {
    result = datum;
  } else if (type == "obj "_code && datum.as<ApplicationObject>() != nullptr) {
    result = datum;
  }
  if (result) return result;
  auto const* list = datum.as<ListReference>();
  if (list != nullptr && (*list)->items.size() == 1) {
    // A list that holds itself would go on for ever.
    Datum const item = (*list)->items.front();
    if (item.as<ListReference>() == nullptr) return coerced(item, type, state);
  }
  return std::nullopt;
}

Code classOf(Datum const& datum) {
  struct Visitor {
    Code operator()(Null) const { return "null"_code; }
    Code operator()(bool) const { return "bool"_code; }
    Code operator()(std::int64_t) const { return "long"_code; }
    Code operator()(double) const { return "doub"_code; }
    Code operator()(Text const&) const { return "ctxt"_code; }
    Code operator()(TypeCode) const { return "pcls"_code; }
    Code operator()(Enumerator) const { return "enum"_code; }
    Code operator()(FileUrl const&) const { return "furl"_code; }
    Code operator()(Alias const&) const { return "alis"_code; }
    Code operator()(ListReference const&) const { return "list"_code; }
    Code operator()(RecordReference const&) const { return "reco"_code; }
    Code operator()(ApplicationObject const& object) const {
      return object.specifier == nullptr ? "capp"_code : object.specifier->wanted;
    }
    Code operator()(ItemReference const&) const { return "obj "_code; }
    Code operator()(VariableReference const&) const { return "obj "_code; }
    Code operator()(PropertyReference const&) const { return "obj "_code; }
    Code operator()(ScriptReference const&) const { return "scpt"_code; }
    Code operator()(HandlerValue const&) const { return "hand"_code; }
    Code operator()(Language) const { return "capp"_code; }
    Code operator()(Date const&) const { return "ldt "_code; }
    Code operator()(Measure const& measure) const { return measure.unit; }
    Code operator()(ActivationReference const&) const { return "null"_code; }
    Code operator()(InsertionPoint const&) const { return "insl"_code; }
  };
  return std::visit(Visitor{}, datum.data);
}

void raiseCannotMake(Datum const& datum, Code type, RunState const& state) {
  ScriptError error;
  error.number = errors::kCannotCoerce;
  error.brief = "Can’t make " + sourceText(dereferenced(datum), state) + " into type " + typeName(type, state) + ".";
  error.offender = datum;
  error.expectedType = TypeCode{type};
  throw error;
}

Datum coerce(Datum const& datum, Code type, RunState& state) {
  std::optional<Datum> result = coerced(datum, type, state);
  if (!result) raiseCannotMake(datum, type, state);
  return *std::move(result);
}

double coerceToReal(Datum const& datum, RunState& state) {
  return *coerce(datum, "doub"_code, state).as<double>();
}

bool coerceToBoolean(Datum const& datum, RunState& state) {
  return *coerce(datum, "bool"_code, state).as<bool>();
}

std::int64_t coerceToInteger(Datum const& datum, RunState& state) {
  return *coerce(datum, "long"_code, state).as<std::int64_t>();
}

}  // namespace morla::applescript
