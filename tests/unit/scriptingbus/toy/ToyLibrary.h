#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "applescript/AppleEvent.h"

namespace morla::scriptingbus::testing {

/// A scriptable library of three books, as small as an application can be that answers get, set, count and a command
/// of its own. What it is not asked in the tests it does not understand.
class ToyLibrary {
 public:
  /// Its terms, as they lie in the source tree.
  [[nodiscard]] static std::string dictionary();
  [[nodiscard]] applescript::EventReply handle(applescript::AppleEvent const& event);

 private:
  struct Book {
    std::string name;
    std::int64_t pageCount = 0;
    std::string shelfMark;
    applescript::Code binding;
  };
  struct Place {
    std::optional<std::size_t> book;  ///< none: the application itself
    applescript::Code property;
  };

  [[nodiscard]] applescript::EventReply get(applescript::Value const& direct) const;
  [[nodiscard]] applescript::EventReply set(applescript::AppleEvent const& event);
  [[nodiscard]] applescript::EventReply lend(applescript::AppleEvent const& event) const;
  /// The book that a specifier picks.
  [[nodiscard]] std::optional<std::size_t> find(applescript::Value const& reference) const;
  [[nodiscard]] std::optional<Place> placeOf(applescript::Value const& reference) const;
  [[nodiscard]] static applescript::Value bookSpecifier(Book const& book);

  std::string openingHours_ = "9 to 5";
  std::vector<Book> books_ = {{"Light", 120, "L1", applescript::Code("Soft")},
                              {"Shadow", 340, "S1", applescript::Code("Hard")},
                              {"Colour, a history", 77, "C1", applescript::Code("Soft")}};
};

}  // namespace morla::scriptingbus::testing
