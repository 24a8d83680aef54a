#include "Fuzz.h"

/// Never content: shows that a violation ends the run.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const*, std::size_t) {
  morla::fuzz::require(false, "nothing holds");
  return 0;
}
