#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "applescript/Value.h"

struct sd_bus_message;

/// Values as variants of D-Bus:
///
///     null (y) 0 · boolean b · integer x · real d · text ay (bytes: it need not be UTF-8) · list av
///     record a(sv), a key is a four-character code or "usrf:" and the name
///     the rest (sv): ("type", s code), ("enum", s code), ("furl", ay path), ("alis", ay path),
///                    ("obj ", (ssvv) wanted, form, selector, container)
namespace morla::scriptingbus {

/// Appends values to one message. Stops at the first that cannot travel; the message is of no use then.
class ValueWriter {
 public:
  /// `depth`: the containers of `message` that are open already.
  explicit ValueWriter(sd_bus_message* message, std::size_t depth = 0) : message_(message), depth_(depth) {}

  bool write(applescript::Value const& value);
  bool writeCode(applescript::Code code);
  /// The bytes as they are: `ay`.
  bool writeBytes(std::string_view bytes);

  /// For what surrounds the values; both count towards the depth.
  bool open(char type, char const* contents);
  bool close();

  /// Why writing stopped; empty while it has not.
  [[nodiscard]] std::string const& problem() const { return problem_; }

 private:
  struct Contents;
  bool writeString(std::string const& text);
  bool writeRecord(applescript::Record const& record);
  bool writeSpecifier(applescript::Specifier const& specifier);
  bool reserve(std::size_t bytes);
  bool check(int result);
  bool fail(std::string problem);

  sd_bus_message* message_;
  std::size_t depth_;
  std::size_t bytes_ = 0;
  std::string problem_;
};

/// Reads values from one message that anybody may have sent. Stops at the first that is none. Whether a selector suits
/// its form is not looked at: that is for the application, which resolves the specifier.
class ValueReader {
 public:
  explicit ValueReader(sd_bus_message* message, std::size_t depth = 0) : message_(message), depth_(depth) {}

  [[nodiscard]] std::optional<applescript::Value> read();
  [[nodiscard]] std::optional<applescript::Code> readCode();
  [[nodiscard]] std::optional<std::string> readBytes();

  bool enter(char type, char const* contents);
  bool leave();
  /// At the end of the container that was entered last.
  [[nodiscard]] bool isAtEnd() const;

  [[nodiscard]] std::string const& problem() const { return problem_; }

 private:
  [[nodiscard]] std::optional<applescript::Value> readContents(std::string_view signature);
  [[nodiscard]] std::optional<applescript::Value> readNull();
  [[nodiscard]] std::optional<applescript::Value> readList();
  [[nodiscard]] std::optional<applescript::Value> readRecord();
  [[nodiscard]] std::optional<applescript::Value> readTagged();
  [[nodiscard]] std::optional<applescript::Value> readTaggedContents(std::string const& tag);
  [[nodiscard]] std::optional<applescript::Value> readSpecifier();
  [[nodiscard]] std::optional<applescript::RecordKey> readKey();
  [[nodiscard]] std::optional<std::string> readString();
  [[nodiscard]] std::optional<std::string> readPath();
  bool reserve(std::size_t bytes);
  bool check(int result);
  bool fail(std::string problem);

  sd_bus_message* message_;
  std::size_t depth_;
  std::size_t bytes_ = 0;
  std::string problem_;
};

}  // namespace morla::scriptingbus
