#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "applescript/AppleEvent.h"

namespace morla::applescript {

/// The parts of a text, in order, each a view into `text`.
[[nodiscard]] std::vector<std::string_view> charactersOf(std::string_view text);
[[nodiscard]] std::vector<std::string_view> wordsOf(std::string_view text);
[[nodiscard]] std::vector<std::string_view> paragraphsOf(std::string_view text);

/// What lies between the delimiters, wherever any of them stands; of two at one place the one that comes first in the
/// list. Without a delimiter that has a character every character is an item.
[[nodiscard]] std::vector<std::string_view> textItemsOf(std::string_view text,
                                                        std::vector<std::string> const& delimiters,
                                                        Considerations considerations);

}  // namespace morla::applescript
