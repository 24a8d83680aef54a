#include "base/Decimal.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace morla {

// std::to_chars would say the same in one line, but for floating-point numbers it is younger than the oldest system
// that the program runs on: there it is missing from the C++ library of macOS 13.0.
std::string shortestDecimal(double value) {
  char buffer[40];
  for (int digits = 15; digits <= 17; ++digits) {
    std::snprintf(buffer, sizeof buffer, "%.*g", digits, value);
    if (std::strtod(buffer, nullptr) == value) break;
  }
  // Whatever is neither digit, sign nor exponent is the locale's decimal point, which may be several bytes long.
  std::string out;
  bool isInPoint = false;
  for (char const* c = buffer; *c != '\0'; ++c) {
    bool const isPoint = std::string_view("0123456789+-e").find(*c) == std::string_view::npos;
    if (!isPoint) out += *c;
    if (isPoint && !isInPoint) out += '.';
    isInPoint = isPoint;
  }
  return out;
}

}  // namespace morla
