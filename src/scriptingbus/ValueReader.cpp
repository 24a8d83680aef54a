#include <systemd/sd-bus.h>

#include <array>
#include <cstring>
#include <memory>
#include <utility>

#include "scriptingbus/Protocol.h"
#include "scriptingbus/ValueCodec.h"

namespace morla::scriptingbus {

using applescript::Alias;
using applescript::Code;
using applescript::Enumerator;
using applescript::FileUrl;
using applescript::KeyForm;
using applescript::List;
using applescript::Null;
using applescript::Record;
using applescript::RecordField;
using applescript::RecordKey;
using applescript::Specifier;
using applescript::SpecifierPointer;
using applescript::TypeCode;
using applescript::Value;

static constexpr std::string_view kUserKeyPrefix = "usrf:";
static constexpr std::size_t kScalarBytes = 16;

static std::optional<KeyForm> keyFormOf(std::string_view text) {
  static constexpr std::array kForms{KeyForm::property, KeyForm::index, KeyForm::name, KeyForm::id,
                                     KeyForm::relative, KeyForm::range, KeyForm::test, KeyForm::every};
  for (KeyForm const form : kForms) {
    if (textOf(form) == text) return form;
  }
  return std::nullopt;
}

std::optional<Value> ValueReader::read() {
  if (!problem_.empty()) return std::nullopt;
  char type = 0;
  char const* contents = nullptr;
  if (!check(sd_bus_message_peek_type(message_, &type, &contents))) return std::nullopt;
  if (type != SD_BUS_TYPE_VARIANT || contents == nullptr) {
    fail("A value is missing.");
    return std::nullopt;
  }
  std::string const signature = contents;  // entering the variant invalidates what was peeked
  if (!enter(SD_BUS_TYPE_VARIANT, signature.c_str())) return std::nullopt;
  auto value = readContents(signature);
  if (!value || !leave()) return std::nullopt;
  return value;
}

std::optional<Value> ValueReader::readContents(std::string_view signature) {
  if (signature == "ay") {
    auto bytes = readBytes();
    if (!bytes) return std::nullopt;
    return Value(std::move(*bytes));
  }
  if (signature == "b") {
    int value = 0;
    if (!reserve(kScalarBytes) || !check(sd_bus_message_read_basic(message_, SD_BUS_TYPE_BOOLEAN, &value))) return {};
    return Value(value != 0);
  }
  if (signature == "x") {
    std::int64_t value = 0;
    if (!reserve(kScalarBytes) || !check(sd_bus_message_read_basic(message_, SD_BUS_TYPE_INT64, &value))) return {};
    return Value(value);
  }
  if (signature == "d") {
    double value = 0;
    if (!reserve(kScalarBytes) || !check(sd_bus_message_read_basic(message_, SD_BUS_TYPE_DOUBLE, &value))) return {};
    return Value(value);
  }
  if (signature == "(sv)") return readTagged();
  if (signature == "av") return readList();
  if (signature == "a(sv)") return readRecord();
  if (signature == "(y)") return readNull();
  fail("A value has the unknown type \"" + std::string(signature) + "\".");
  return std::nullopt;
}

std::optional<Value> ValueReader::readNull() {
  std::uint8_t byte = 0;
  if (!enter(SD_BUS_TYPE_STRUCT, "y") || !reserve(kScalarBytes) ||
      !check(sd_bus_message_read_basic(message_, SD_BUS_TYPE_BYTE, &byte)) || !leave()) {
    return std::nullopt;
  }
  if (byte != 0) {
    fail("A null value holds " + std::to_string(byte) + ".");
    return std::nullopt;
  }
  return Value();
}

std::optional<Value> ValueReader::readList() {
  List list;
  if (!enter(SD_BUS_TYPE_ARRAY, "v")) return std::nullopt;
  while (!isAtEnd()) {
    auto item = read();
    if (!item) return std::nullopt;
    list.push_back(std::move(*item));
  }
  if (!leave()) return std::nullopt;
  return Value(std::move(list));
}

std::optional<Value> ValueReader::readRecord() {
  Record record;
  if (!enter(SD_BUS_TYPE_ARRAY, "(sv)")) return std::nullopt;
  while (!isAtEnd()) {
    if (!enter(SD_BUS_TYPE_STRUCT, "sv")) return std::nullopt;
    auto key = readKey();
    if (!key) return std::nullopt;
    auto value = read();
    if (!value || !leave()) return std::nullopt;
    record.push_back(RecordField{std::move(*key), std::move(*value)});
  }
  if (!leave()) return std::nullopt;
  return Value(std::move(record));
}

std::optional<RecordKey> ValueReader::readKey() {
  auto const text = readString();
  if (!text) return std::nullopt;
  if (text->size() == 4) return RecordKey(Code(*text));
  if (text->starts_with(kUserKeyPrefix)) return RecordKey(text->substr(kUserKeyPrefix.size()));
  fail("\"" + *text + "\" is no key of a record.");
  return std::nullopt;
}

std::optional<Value> ValueReader::readTagged() {
  if (!enter(SD_BUS_TYPE_STRUCT, "sv")) return std::nullopt;
  auto const tag = readString();
  if (!tag) return std::nullopt;
  auto value = readTaggedContents(*tag);
  if (!value || !leave()) return std::nullopt;
  return value;
}

std::optional<Value> ValueReader::readTaggedContents(std::string const& tag) {
  std::optional<Value> value;
  if (tag == "type" || tag == "enum") {
    if (!enter(SD_BUS_TYPE_VARIANT, "s")) return std::nullopt;
    if (auto const code = readCode()) value = tag == "type" ? Value(TypeCode{*code}) : Value(Enumerator{*code});
  } else if (tag == "furl" || tag == "alis") {
    if (!enter(SD_BUS_TYPE_VARIANT, "ay")) return std::nullopt;
    if (auto path = readPath()) value = tag == "furl" ? Value(FileUrl{std::move(*path)}) : Value(Alias{*path});
  } else if (tag == "obj ") {
    if (!enter(SD_BUS_TYPE_VARIANT, "(ssvv)")) return std::nullopt;
    value = readSpecifier();
  } else {
    fail("A value has the unknown type \"" + tag + "\".");
  }
  if (!value || !leave()) return std::nullopt;
  return value;
}

std::optional<Value> ValueReader::readSpecifier() {
  if (!enter(SD_BUS_TYPE_STRUCT, "ssvv")) return std::nullopt;
  auto const wanted = readCode();
  if (!wanted) return std::nullopt;
  auto const formText = readString();
  if (!formText) return std::nullopt;
  auto const form = keyFormOf(*formText);
  if (!form) {
    fail("A specifier has the unknown form \"" + *formText + "\".");
    return std::nullopt;
  }
  auto selector = read();
  if (!selector) return std::nullopt;
  auto container = read();
  if (!container || !leave()) return std::nullopt;
  return Value(SpecifierPointer(
      std::make_shared<Specifier>(Specifier{*wanted, *form, std::move(*selector), std::move(*container)})));
}

std::optional<Code> ValueReader::readCode() {
  auto const text = readString();
  if (!text) return std::nullopt;
  if (text->size() != 4) {
    fail("\"" + *text + "\" is no four-character code.");
    return std::nullopt;
  }
  return Code(*text);
}

std::optional<std::string> ValueReader::readString() {
  char const* text = nullptr;
  if (!problem_.empty() || !check(sd_bus_message_read_basic(message_, SD_BUS_TYPE_STRING, &text))) return std::nullopt;
  std::string copy = text;
  if (!reserve(kScalarBytes + copy.size())) return std::nullopt;
  return copy;
}

std::optional<std::string> ValueReader::readPath() {
  auto path = readBytes();
  if (path && path->find('\0') != std::string::npos) {
    fail("A file's path holds a null character.");
    return std::nullopt;
  }
  return path;
}

std::optional<std::string> ValueReader::readBytes() {
  void const* bytes = nullptr;
  std::size_t size = 0;
  if (!problem_.empty() || !check(sd_bus_message_read_array(message_, SD_BUS_TYPE_BYTE, &bytes, &size)) ||
      !reserve(kScalarBytes + size)) {
    return std::nullopt;
  }
  // An empty array comes as a null pointer.
  return size == 0 ? std::string() : std::string(static_cast<char const*>(bytes), size);
}

bool ValueReader::enter(char type, char const* contents) {
  if (!problem_.empty()) return false;
  if (depth_ == kMaximumDepth) return fail("A value is nested too deeply.");
  ++depth_;
  return reserve(kScalarBytes / 2) && check(sd_bus_message_enter_container(message_, type, contents));
}

bool ValueReader::leave() {
  if (!problem_.empty()) return false;
  --depth_;
  return check(sd_bus_message_exit_container(message_));
}

bool ValueReader::isAtEnd() const {
  return !problem_.empty() || sd_bus_message_at_end(message_, 0) != 0;
}

bool ValueReader::reserve(std::size_t bytes) {
  if (!problem_.empty()) return false;
  if (bytes > kMaximumBytes - bytes_) return fail("A value is too large.");
  bytes_ += bytes;
  return true;
}

bool ValueReader::check(int result) {
  // Zero is what reading past the end of a container gives.
  if (result > 0) return true;
  if (result == 0) return fail("A value ends too early.");
  return fail(std::string("A value is malformed: ") + std::strerror(-result) + ".");
}

bool ValueReader::fail(std::string problem) {
  if (problem_.empty()) problem_ = std::move(problem);
  return false;
}

}  // namespace morla::scriptingbus
