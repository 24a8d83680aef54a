#include "shortcuts/KeyNames.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "base/unicode/Unicode.h"

namespace morla::shortcuts {
namespace {

constexpr std::array<std::pair<std::uint16_t, std::string_view>, 34> kNames{{
    {36, "↩"},    {48, "⇥"},    {49, "Espace"}, {51, "⌫"},    {53, "⎋"},    {115, "↖"},   {116, "⇞"},
    {117, "⌦"},   {119, "↘"},   {121, "⇟"},     {123, "←"},   {124, "→"},   {125, "↓"},   {126, "↑"},
    {122, "F1"},  {120, "F2"},  {99, "F3"},     {118, "F4"},  {96, "F5"},   {97, "F6"},   {98, "F7"},
    {100, "F8"},  {101, "F9"},  {109, "F10"},   {103, "F11"}, {111, "F12"}, {105, "F13"}, {107, "F14"},
    {113, "F15"}, {106, "F16"}, {64, "F17"},    {79, "F18"},  {80, "F19"},  {90, "F20"},
}};

}  // namespace

std::string charFromEvent(platform::KeyEvent const& event, std::uint16_t keyCode) {
  auto const* const found = std::ranges::find(kNames, keyCode, [](auto const& entry) { return entry.first; });
  if (found != kNames.end()) return std::string(found->second);
  return unicode::uppercased(event.charactersIgnoringModifiers);
}

}  // namespace morla::shortcuts
