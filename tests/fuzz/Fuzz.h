#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

/// What a fuzz target defines; called with any bytes, once for each input. Whatever it does must not depend on earlier
/// inputs.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace morla::fuzz {

/// The fuzzer's bytes as the text they are meant to be.
[[nodiscard]] inline std::string textOf(std::uint8_t const* data, std::size_t size) {
  return size == 0 ? std::string() : std::string(reinterpret_cast<char const*>(data), size);
}

/// Ends the program when something that holds for every input does not hold for this one.
inline void require(bool holds, char const* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

}  // namespace morla::fuzz
