#include <algorithm>

#include "Fuzz.h"
#include "platform/linux/system/DefaultsJson.h"

namespace {

using namespace morla::linux;
using morla::fuzz::require;

/// A file that was cut off anywhere loses keys and invents none.
void requireNothingInvented(std::string const& text, nlohmann::json const& whole) {
  std::size_t const step = std::max<std::size_t>(1, text.size() / 16);
  for (std::size_t length = 0; length < text.size(); length += step) {
    auto const beginning = parseDefaults(text.substr(0, length));
    for (auto const& [key, value] : beginning.object.items()) {
      require(whole.contains(key), "a beginning has no keys of its own");
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  auto const text = morla::fuzz::textOf(data, size);
  auto const read = parseDefaults(text);
  require(read.object.is_object(), "there always are defaults, if none");

  auto const written = writtenDefaults(read.object);
  auto const again = parseDefaults(written);
  require(again.damage.empty(), "what was written is whole");
  require(again.object == read.object, "what was written is read");
  require(writtenDefaults(again.object) == written, "and written in the same way");

  for (auto const& [key, value] : read.object.items()) {
    auto const typed = defaultsValue(value);
    if (!typed) continue;
    auto const stored = jsonValue(*typed);
    require(stored.has_value(), "what was read can be stored");
    require(defaultsValue(*stored) == typed, "and is read as the same");
  }
  if (read.damage.empty()) requireNothingInvented(text, read.object);
  return 0;
}
