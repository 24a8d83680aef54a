#include "support/LineReader.h"

#include <poll.h>
#include <unistd.h>

#include <array>

namespace morla::support {

constexpr int kPatienceMilliseconds = 10'000;

std::optional<std::string> LineReader::next() {
  for (;;) {
    if (auto const end = rest_.find('\n'); end != std::string::npos) {
      auto line = rest_.substr(0, end);
      rest_.erase(0, end + 1);
      return line;
    }
    pollfd waiting{from_.get(), POLLIN, 0};
    if (poll(&waiting, 1, kPatienceMilliseconds) <= 0) return std::nullopt;
    std::array<char, 512> buffer;
    auto const count = read(from_.get(), buffer.data(), buffer.size());
    if (count <= 0) return std::nullopt;
    rest_.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

}  // namespace morla::support
