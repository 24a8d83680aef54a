#include "applescript/Units.h"

#include <algorithm>
#include <array>

namespace morla::applescript {
namespace {

using enum Unit::Kind;

constexpr double kFoot = 0.3048;
constexpr double kYard = 0.9144;
constexpr double kMile = 1609.344;
constexpr double kInch = 0.0254;
constexpr double kPound = 0.45359237;
constexpr double kGallon = 3.785411784;  // of the United States, in litres

constexpr auto kUnits = std::to_array<Unit>({
    {length, "centimeters", "cmtr"_code, 0.01},
    {length, "centimetres", "cmtr"_code, 0.01},
    {length, "feet", "feet"_code, kFoot},
    {length, "inches", "inch"_code, kInch},
    {length, "kilometers", "kmtr"_code, 1000},
    {length, "kilometres", "kmtr"_code, 1000},
    {length, "meters", "metr"_code, 1},
    {length, "metres", "metr"_code, 1},
    {length, "miles", "mile"_code, kMile},
    {length, "yards", "yard"_code, kYard},
    {area, "square feet", "sqft"_code, kFoot* kFoot},
    {area, "square kilometers", "sqkm"_code, 1'000'000},
    {area, "square kilometres", "sqkm"_code, 1'000'000},
    {area, "square meters", "sqrm"_code, 1},
    {area, "square metres", "sqrm"_code, 1},
    {area, "square miles", "sqmi"_code, kMile* kMile},
    {area, "square yards", "sqyd"_code, kYard* kYard},
    {solidVolume, "cubic centimeters", "ccmt"_code, 0.000'001},
    {solidVolume, "cubic centimetres", "ccmt"_code, 0.000'001},
    {solidVolume, "cubic feet", "cfet"_code, kFoot* kFoot* kFoot},
    {solidVolume, "cubic inches", "cuin"_code, kInch* kInch* kInch},
    {solidVolume, "cubic meters", "cmet"_code, 1},
    {solidVolume, "cubic metres", "cmet"_code, 1},
    {solidVolume, "cubic yards", "cyrd"_code, kYard* kYard* kYard},
    {liquidVolume, "gallons", "galn"_code, kGallon},
    {liquidVolume, "liters", "litr"_code, 1},
    {liquidVolume, "litres", "litr"_code, 1},
    {liquidVolume, "quarts", "qrts"_code, kGallon / 4},
    {mass, "grams", "gram"_code, 0.001},
    {mass, "kilograms", "kgrm"_code, 1},
    {mass, "ounces", "ozs "_code, kPound / 16},
    {mass, "pounds", "lbs "_code, kPound},
    {temperature, "degrees Celsius", "degc"_code, 1, 273.15},
    {temperature, "degrees Fahrenheit", "degf"_code, 5.0 / 9, 459.67},
    {temperature, "degrees Kelvin", "degk"_code, 1},
});

}  // namespace

std::span<Unit const> allUnits() {
  return kUnits;
}

Unit const* unitWithCode(Code code) {
  auto const found = std::ranges::find(kUnits, code, &Unit::code);
  return found == kUnits.end() ? nullptr : &*found;
}

std::optional<double> convertedMeasure(Measure const& measure, Code unit) {
  Unit const* const from = unitWithCode(measure.unit);
  Unit const* const to = unitWithCode(unit);
  if (from == nullptr || to == nullptr || from->kind != to->kind) return std::nullopt;
  if (from->code == to->code) return measure.amount;
  return (measure.amount + from->offset) * from->factor / to->factor - to->offset;
}

}  // namespace morla::applescript
