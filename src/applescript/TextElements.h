#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "applescript/AppleEvent.h"

namespace morla::applescript {

/// The parts of a text, in order, each a view into `text`.
[[nodiscard]] std::vector<std::string_view> charactersOf(std::string_view text);
[[nodiscard]] std::vector<std::string_view> wordsOf(std::string_view text);
[[nodiscard]] std::vector<std::string_view> paragraphsOf(std::string_view text);

/// The code points of a text; a byte that is no text stands for itself.
[[nodiscard]] std::vector<std::int64_t> codePointsOf(std::string_view text);
/// False when there is no such code point.
[[nodiscard]] bool appendCodePoint(std::string& text, std::int64_t codePoint);

/// UTF-16, the more significant byte first unless a byte order mark says otherwise. Half a pair becomes U+FFFD.
[[nodiscard]] std::string textOfUtf16(std::string_view bytes);
/// Without a byte order mark, the more significant byte first.
[[nodiscard]] std::string utf16Of(std::string_view text);

/// What lies between the delimiters, wherever any of them stands; of two at one place the one that comes first in the
/// list. Without a delimiter that has a character every character is an item.
[[nodiscard]] std::vector<std::string_view> textItemsOf(std::string_view text,
                                                        std::vector<std::string> const& delimiters,
                                                        Considerations considerations);

}  // namespace morla::applescript
