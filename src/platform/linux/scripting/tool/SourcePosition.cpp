#include "platform/linux/scripting/tool/SourcePosition.h"

#include <algorithm>

namespace morla::linux {

SourcePosition positionIn(std::string_view source, std::size_t offset) {
  SourcePosition position;
  std::size_t const end = std::min(offset, source.size());
  for (std::size_t i = 0; i < end; ++i) {
    bool const isFirstOfTwo = source[i] == '\r' && i + 1 < source.size() && source[i + 1] == '\n';
    if (source[i] == '\n' || (source[i] == '\r' && !isFirstOfTwo)) {
      ++position.line;
      position.column = 1;
    } else if ((static_cast<unsigned char>(source[i]) & 0xC0U) != 0x80U) {  // not inside a UTF-8 sequence
      ++position.column;
    }
  }
  return position;
}

}  // namespace morla::linux
