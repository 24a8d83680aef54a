#include "platform/linux/system/DefaultsCommand.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string_view>
#include <variant>

#include "base/unicode/Unicode.h"
#include "platform/linux/system/DefaultsFile.h"

namespace morla::linux {
namespace {

using platform::DefaultsValue;

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

/// How long another writer is waited for: it needs less than a millisecond, unless it has been stopped.
constexpr std::chrono::seconds kPatience{3};

int complain(int status, std::string const& message) {
  std::fprintf(stderr, "morla defaults: %s\n", message.c_str());
  return status;
}

int usage(std::string const& message) {
  complain(kUsage, message);
  std::fputs(defaultsCommandHelp().c_str(), stderr);
  return kUsage;
}

/// One value stays one line, and the escapes can be told from text that looks like them.
std::string escaped(std::string_view text) {
  std::string out;
  for (char const c : text) {
    switch (c) {
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
          char code[8];
          std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(static_cast<unsigned char>(c)));
          out += code;
        } else {
          out += c;
        }
    }
  }
  return out;
}

std::string_view typeName(DefaultsValue const& value) {
  constexpr std::string_view kNames[] = {"boolean", "integer", "number", "text"};
  return kNames[value.index()];
}

std::string shown(DefaultsValue const& value) {
  if (auto const* text = std::get_if<std::string>(&value)) return escaped(*text);
  return platform::toJson(value).text();
}

template <typename Number>
std::optional<DefaultsValue> parsedAs(std::string_view text) {
  Number number{};
  auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if constexpr (std::is_floating_point_v<Number>) {
    if (!std::isfinite(number)) return std::nullopt;
  }
  return DefaultsValue(number);
}

struct TypedArgument {
  std::optional<DefaultsValue> value;
  std::string problem;
};

TypedArgument typedArgument(std::string const& type, std::string const& text) {
  std::optional<DefaultsValue> value;
  std::string expected;
  if (type == "boolean") {
    if (text == "true" || text == "false") value = DefaultsValue(text == "true");
    expected = "true or false";
  } else if (type == "integer") {
    value = parsedAs<std::int64_t>(text);
    expected = "a whole number of at most 64 bits";
  } else if (type == "number") {
    value = parsedAs<double>(text);
    expected = "a finite decimal number";
  } else if (type == "text") {
    if (unicode::isWellFormed(text)) value = DefaultsValue(text);
    expected = "UTF-8 text";
  } else {
    return {std::nullopt, "unknown type '" + escaped(type) + "': boolean, integer, number or text"};
  }
  if (!value) return {std::nullopt, "'" + escaped(text) + "' is not " + expected};
  return {std::move(value), {}};
}

int readAll(DefaultsFile const& file) {
  auto const read = file.read();
  for (auto const& [key, value] : read.values) {
    std::printf("%s %s %s\n", escaped(key).c_str(), std::string(typeName(value)).c_str(), shown(value).c_str());
  }
  return read.problem.empty() ? kDone : complain(kFailed, read.problem);
}

int readOne(DefaultsFile const& file, std::string const& key) {
  auto const read = file.read();
  auto const found = read.values.find(key);
  if (found == read.values.end()) {
    return complain(kFailed, read.problem.empty() ? "no value under '" + escaped(key) + "'" : read.problem);
  }
  std::printf("%s\n", shown(found->second).c_str());
  return kDone;
}

int change(DefaultsFile const& file, std::string const& key, std::optional<DefaultsValue> value) {
  auto const change = file.change({{key, std::move(value)}}, kPatience);
  if (change.outcome == DefaultsFile::Outcome::written) return kDone;
  return complain(kFailed, change.problem + "; nothing was changed");
}

}  // namespace

std::string defaultsCommandHelp() {
  return "  morla defaults read                                           every setting: KEY TYPE VALUE\n"
         "  morla defaults read KEY                                       its value\n"
         "  morla defaults write KEY boolean|integer|number|text VALUE\n"
         "  morla defaults delete KEY\n";
}

int defaultsCommand(std::vector<std::string> const& arguments) {
  DefaultsFile const file(DefaultsFile::usualPath());
  std::string const verb = arguments.empty() ? "" : arguments[0];
  std::size_t const count = arguments.size();
  if (verb == "read" && count == 1) return readAll(file);
  if (verb == "read" && count == 2) return readOne(file, arguments[1]);
  if (verb == "write" && count == 4) {
    auto argument = typedArgument(arguments[2], arguments[3]);
    if (!argument.value) return complain(kUsage, argument.problem);
    return change(file, arguments[1], std::move(argument.value));
  }
  if (verb == "delete" && count == 2) {
    if (!file.read().values.contains(arguments[1])) {
      return complain(kFailed, "no value under '" + escaped(arguments[1]) + "'");
    }
    return change(file, arguments[1], std::nullopt);
  }
  if (verb.empty()) return usage("what is to be done?");
  if (verb != "read" && verb != "write" && verb != "delete") return usage("unknown command '" + escaped(verb) + "'");
  return usage("wrong number of arguments for '" + verb + "'");
}

}  // namespace morla::linux
