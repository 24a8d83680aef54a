#pragma once

#include <string>

namespace morla {

/// The shortest of the decimal texts of `value` with 15 to 17 significant digits that reads back as the same number:
/// "0.1", "1e+20". The decimal point is "." in every locale. `value` is finite. Any thread.
[[nodiscard]] std::string shortestDecimal(double value);

}  // namespace morla
