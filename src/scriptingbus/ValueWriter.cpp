#include <systemd/sd-bus.h>

#include <cstring>
#include <utility>

#include "scriptingbus/Protocol.h"
#include "scriptingbus/ValueCodec.h"

namespace morla::scriptingbus {

using applescript::Alias;
using applescript::Code;
using applescript::Enumerator;
using applescript::FileUrl;
using applescript::List;
using applescript::Null;
using applescript::Record;
using applescript::Specifier;
using applescript::SpecifierPointer;
using applescript::TypeCode;
using applescript::Value;

/// What a scalar costs, its padding and the signature of its variant included.
static constexpr std::size_t kScalarBytes = 16;

/// Writes what is inside the variant, one overload an alternative.
struct ValueWriter::Contents {
  ValueWriter& writer;

  static char const* signature(Null) { return "(y)"; }
  static char const* signature(bool) { return "b"; }
  static char const* signature(std::int64_t) { return "x"; }
  static char const* signature(double) { return "d"; }
  static char const* signature(std::string const&) { return "ay"; }
  static char const* signature(List const&) { return "av"; }
  static char const* signature(Record const&) { return "a(sv)"; }
  static char const* signature(auto const&) { return "(sv)"; }

  bool operator()(Null) const {
    std::uint8_t const nothing = 0;
    return writer.open(SD_BUS_TYPE_STRUCT, "y") && scalar(SD_BUS_TYPE_BYTE, &nothing) && writer.close();
  }
  bool operator()(bool value) const {
    int const number = value ? 1 : 0;
    return scalar(SD_BUS_TYPE_BOOLEAN, &number);
  }
  bool operator()(std::int64_t value) const { return scalar(SD_BUS_TYPE_INT64, &value); }
  bool operator()(double value) const { return scalar(SD_BUS_TYPE_DOUBLE, &value); }
  bool operator()(std::string const& text) const { return writer.writeBytes(text); }
  bool operator()(TypeCode type) const {
    return tagged("type", "s", [&] { return writer.writeCode(type.code); });
  }
  bool operator()(Enumerator enumerator) const {
    return tagged("enum", "s", [&] { return writer.writeCode(enumerator.code); });
  }
  bool operator()(FileUrl const& file) const {
    return tagged("furl", "ay", [&] { return writer.writeBytes(file.path); });
  }
  bool operator()(Alias const& alias) const {
    return tagged("alis", "ay", [&] { return writer.writeBytes(alias.path); });
  }
  bool operator()(List const& list) const {
    if (!writer.open(SD_BUS_TYPE_ARRAY, "v")) return false;
    for (Value const& item : list) {
      if (!writer.write(item)) return false;
    }
    return writer.close();
  }
  bool operator()(Record const& record) const { return writer.writeRecord(record); }
  bool operator()(SpecifierPointer const& specifier) const {
    if (specifier == nullptr) return writer.fail("A specifier is missing.");
    return tagged("obj ", "(ssvv)", [&] { return writer.writeSpecifier(*specifier); });
  }

 private:
  bool scalar(char type, void const* value) const {
    return writer.reserve(kScalarBytes) && writer.check(sd_bus_message_append_basic(writer.message_, type, value));
  }
  template <typename Write>
  bool tagged(char const* tag, char const* signature, Write const& write) const {
    return writer.open(SD_BUS_TYPE_STRUCT, "sv") && writer.writeString(tag) &&
           writer.open(SD_BUS_TYPE_VARIANT, signature) && write() && writer.close() && writer.close();
  }
};

bool ValueWriter::write(Value const& value) {
  char const* const signature = std::visit([](auto const& held) { return Contents::signature(held); }, value.data);
  return open(SD_BUS_TYPE_VARIANT, signature) && std::visit(Contents{*this}, value.data) && close();
}

bool ValueWriter::writeRecord(Record const& record) {
  if (!open(SD_BUS_TYPE_ARRAY, "(sv)")) return false;
  for (auto const& [key, value] : record) {
    auto const* const code = std::get_if<Code>(&key);
    if (!open(SD_BUS_TYPE_STRUCT, "sv")) return false;
    if (!(code != nullptr ? writeCode(*code) : writeString("usrf:" + std::get<std::string>(key)))) return false;
    if (!write(value) || !close()) return false;
  }
  return close();
}

bool ValueWriter::writeSpecifier(Specifier const& specifier) {
  return open(SD_BUS_TYPE_STRUCT, "ssvv") && writeCode(specifier.wanted) &&
         writeString(std::string(textOf(specifier.form))) && write(specifier.selector) && write(specifier.container) &&
         close();
}

bool ValueWriter::writeCode(Code code) {
  return writeString(code.text());
}

bool ValueWriter::writeString(std::string const& text) {
  // The strings of the bus end at the first NUL; a code or name that holds one would arrive as another.
  if (std::memchr(text.data(), '\0', text.size()) != nullptr) return fail("A code or name holds a null character.");
  if (!reserve(kScalarBytes + text.size())) return false;
  if (sd_bus_message_append_basic(message_, SD_BUS_TYPE_STRING, text.c_str()) < 0) {
    return fail("A code or name is not UTF-8 text.");
  }
  return true;
}

bool ValueWriter::writeBytes(std::string_view bytes) {
  return reserve(kScalarBytes + bytes.size()) &&
         check(sd_bus_message_append_array(message_, SD_BUS_TYPE_BYTE, bytes.data(), bytes.size()));
}

bool ValueWriter::open(char type, char const* contents) {
  if (!problem_.empty()) return false;
  if (depth_ == kMaximumDepth) return fail("The value is nested too deeply to be sent.");
  ++depth_;
  return reserve(kScalarBytes / 2) && check(sd_bus_message_open_container(message_, type, contents));
}

bool ValueWriter::close() {
  if (!problem_.empty()) return false;
  --depth_;
  return check(sd_bus_message_close_container(message_));
}

bool ValueWriter::reserve(std::size_t bytes) {
  if (!problem_.empty()) return false;
  if (bytes > kMaximumBytes - bytes_) return fail("The value is too large to be sent.");
  bytes_ += bytes;
  return true;
}

bool ValueWriter::check(int result) {
  if (result >= 0) return true;
  return fail(std::string("The value cannot be sent: ") + std::strerror(-result) + ".");
}

bool ValueWriter::fail(std::string problem) {
  if (problem_.empty()) problem_ = std::move(problem);
  return false;
}

}  // namespace morla::scriptingbus
