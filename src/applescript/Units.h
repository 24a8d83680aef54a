#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "applescript/Datum.h"

/// Measures: numbers in a unit, which `as` makes and converts ("12 as feet as yards").
namespace morla::applescript {

/// The units that begin with the same kind convert into each other.
struct Unit {
  enum class Kind { length, area, solidVolume, liquidVolume, mass, temperature } kind;
  std::string_view name;
  Code code;
  double factor;        ///< one of it in the kind's metric unit; exact by definition of the units
  double offset = 0.0;  ///< added before the factor, for temperatures
};

/// Every spelling; the first of a code is the one that is printed.
[[nodiscard]] std::span<Unit const> allUnits();
/// Null when no unit has that code.
[[nodiscard]] Unit const* unitWithCode(Code code);

/// Nothing when the two units measure different things.
[[nodiscard]] std::optional<double> convertedMeasure(Measure const& measure, Code unit);

}  // namespace morla::applescript
