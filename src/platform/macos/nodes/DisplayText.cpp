#include "platform/macos/nodes/DisplayText.h"

#include "base/unicode/Utf8.h"

namespace morla::macos {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isControl(char32_t codePoint) {
  return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
}

}  // namespace

std::string displayable(std::string_view text) {
  std::string shown;
  shown.reserve(text.size());
  while (!text.empty()) {
    auto const [codePoint, length] = unicode::decodeFirst(text);
    text.remove_prefix(length);
    if (codePoint >= unicode::kIllFormedByte) {
      unicode::appendCodePoint(shown, kReplacement);
    } else if (codePoint == U'\n' || !isControl(codePoint)) {
      unicode::appendCodePoint(shown, codePoint);
    }
  }
  return shown;
}

}  // namespace morla::macos
