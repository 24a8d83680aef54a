#include "platform/linux/input/KeyCodes.h"

#include <algorithm>
#include <array>
#include <utility>

namespace morla::linux {
namespace {

/// In ascending order of the names. The numbers are macOS's, those of letters by their place on an ANSI keyboard. The
/// keys beside F12 of a PC's keyboard are what macOS takes them for.
constexpr auto kKeys = std::to_array<std::pair<std::string_view, std::uint16_t>>({
    {"AB01", 6},   {"AB02", 7},   {"AB03", 8},   {"AB04", 9},   {"AB05", 11},  {"AB06", 45},  {"AB07", 46},
    {"AB08", 43},  {"AB09", 47},  {"AB10", 44},  {"AC01", 0},   {"AC02", 1},   {"AC03", 2},   {"AC04", 3},
    {"AC05", 5},   {"AC06", 4},   {"AC07", 38},  {"AC08", 40},  {"AC09", 37},  {"AC10", 41},  {"AC11", 39},
    {"AC12", 42},  {"AD01", 12},  {"AD02", 13},  {"AD03", 14},  {"AD04", 15},  {"AD05", 17},  {"AD06", 16},
    {"AD07", 32},  {"AD08", 34},  {"AD09", 31},  {"AD10", 35},  {"AD11", 33},  {"AD12", 30},  {"AE01", 18},
    {"AE02", 19},  {"AE03", 20},  {"AE04", 21},  {"AE05", 23},  {"AE06", 22},  {"AE07", 26},  {"AE08", 28},
    {"AE09", 25},  {"AE10", 29},  {"AE11", 27},  {"AE12", 24},  {"BKSL", 42},  {"BKSP", 51},  {"CAPS", 57},
    {"COMP", 110}, {"DELE", 117}, {"DOWN", 125}, {"END", 119},  {"ESC", 53},   {"FK01", 122}, {"FK02", 120},
    {"FK03", 99},  {"FK04", 118}, {"FK05", 96},  {"FK06", 97},  {"FK07", 98},  {"FK08", 100}, {"FK09", 101},
    {"FK10", 109}, {"FK11", 103}, {"FK12", 111}, {"FK13", 105}, {"FK14", 107}, {"FK15", 113}, {"FK16", 106},
    {"FK17", 64},  {"FK18", 79},  {"FK19", 80},  {"FK20", 90},  {"HELP", 114}, {"HOME", 115}, {"INS", 114},
    {"KP0", 82},   {"KP1", 83},   {"KP2", 84},   {"KP3", 85},   {"KP4", 86},   {"KP5", 87},   {"KP6", 88},
    {"KP7", 89},   {"KP8", 91},   {"KP9", 92},   {"KPAD", 69},  {"KPDL", 65},  {"KPDV", 75},  {"KPEN", 76},
    {"KPEQ", 81},  {"KPMU", 67},  {"KPSU", 78},  {"LALT", 58},  {"LCTL", 59},  {"LEFT", 123}, {"LFSH", 56},
    {"LSGT", 10},  {"LWIN", 55},  {"NMLK", 71},  {"PAUS", 113}, {"PGDN", 121}, {"PGUP", 116}, {"PRSC", 105},
    {"RALT", 61},  {"RCTL", 62},  {"RGHT", 124}, {"RTRN", 36},  {"RTSH", 60},  {"RWIN", 54},  {"SCLK", 107},
    {"SPCE", 49},  {"TAB", 48},   {"TLDE", 50},  {"UP", 126},
});
static_assert(std::ranges::is_sorted(kKeys));

/// In ascending order of the key codes.
constexpr auto kCharacters = std::to_array<std::pair<std::uint16_t, std::string_view>>({
    {36, "\x0D"},           // U+000D
    {51, "\x7F"},           // U+007F
    {53, "\x1B"},           // U+001B
    {64, "\xEF\x9C\x94"},   // U+F714
    {71, "\xEF\x9C\xB9"},   // U+F739
    {76, "\x03"},           // U+0003
    {79, "\xEF\x9C\x95"},   // U+F715
    {80, "\xEF\x9C\x96"},   // U+F716
    {90, "\xEF\x9C\x97"},   // U+F717
    {96, "\xEF\x9C\x88"},   // U+F708
    {97, "\xEF\x9C\x89"},   // U+F709
    {98, "\xEF\x9C\x8A"},   // U+F70A
    {99, "\xEF\x9C\x86"},   // U+F706
    {100, "\xEF\x9C\x8B"},  // U+F70B
    {101, "\xEF\x9C\x8C"},  // U+F70C
    {103, "\xEF\x9C\x8E"},  // U+F70E
    {105, "\xEF\x9C\x90"},  // U+F710
    {106, "\xEF\x9C\x93"},  // U+F713
    {107, "\xEF\x9C\x91"},  // U+F711
    {109, "\xEF\x9C\x8D"},  // U+F70D
    {110, "\xEF\x9C\xB5"},  // U+F735
    {111, "\xEF\x9C\x8F"},  // U+F70F
    {113, "\xEF\x9C\x92"},  // U+F712
    {114, "\xEF\x9C\xA7"},  // U+F727
    {115, "\xEF\x9C\xA9"},  // U+F729
    {116, "\xEF\x9C\xAC"},  // U+F72C
    {117, "\xEF\x9C\xA8"},  // U+F728
    {118, "\xEF\x9C\x87"},  // U+F707
    {119, "\xEF\x9C\xAB"},  // U+F72B
    {120, "\xEF\x9C\x85"},  // U+F705
    {121, "\xEF\x9C\xAD"},  // U+F72D
    {122, "\xEF\x9C\x84"},  // U+F704
    {123, "\xEF\x9C\x82"},  // U+F702
    {124, "\xEF\x9C\x83"},  // U+F703
    {125, "\xEF\x9C\x81"},  // U+F701
    {126, "\xEF\x9C\x80"},  // U+F700
});
static_assert(std::ranges::is_sorted(kCharacters));

constexpr std::uint16_t kMacTab = 48;

/// What `table` has for `key`, or `otherwise`.
template <typename Table, typename Key, typename Value>
Value lookUp(Table const& table, Key key, Value otherwise) {
  auto const found = std::ranges::lower_bound(table, key, {}, [](auto const& entry) { return entry.first; });
  return found != table.end() && found->first == key ? found->second : otherwise;
}

}  // namespace

std::uint16_t macKeyCode(std::string_view name) {
  return lookUp(kKeys, name, kNoMacKey);
}

std::string_view macCharacters(std::uint16_t macKeyCode, bool withShift) {
  if (macKeyCode == kMacTab) return withShift ? "\x19" : "\t";
  return lookUp(kCharacters, macKeyCode, std::string_view());
}

}  // namespace morla::linux
