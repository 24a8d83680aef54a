#include "platform/linux/ui/views/Colours.h"

#include <QPalette>

#include "base/Overloaded.h"

namespace morla::linux {
namespace {

struct Pair {
  QColor light;
  QColor dark;
};

Pair pairOf(view::SystemColour colour) {
  using view::SystemColour;
  switch (colour) {
    case SystemColour::primary:
      return {QColor(0, 0, 0, 217), QColor(255, 255, 255, 217)};
    case SystemColour::secondary:
      // Half of black would be 3.9 to 1 on a light window; small text needs 4.5.
      return {QColor(0, 0, 0, 143), QColor(255, 255, 255, 140)};
    case SystemColour::tertiary:
      return {QColor(0, 0, 0, 64), QColor(255, 255, 255, 64)};
    case SystemColour::accent:
      return {QColor(0x00, 0x7A, 0xFF), QColor(0x0A, 0x84, 0xFF)};
    case SystemColour::red:
      return {QColor(0xFF, 0x3B, 0x30), QColor(0xFF, 0x45, 0x3A)};
    case SystemColour::orange:
      return {QColor(0xFF, 0x95, 0x00), QColor(0xFF, 0x9F, 0x0A)};
    case SystemColour::green:
      return {QColor(0x34, 0xC7, 0x59), QColor(0x30, 0xD1, 0x58)};
    case SystemColour::grey:
      return {QColor(0x8E, 0x8E, 0x93), QColor(0x8E, 0x8E, 0x93)};
    case SystemColour::windowBackground:
      return {QColor(0xEC, 0xEC, 0xEC), QColor(0x1E, 0x1E, 0x1E)};
    case SystemColour::controlBackground:
      return {QColor(0xFF, 0xFF, 0xFF), QColor(0x2C, 0x2C, 0x2E)};
    case SystemColour::separator:
      return {QColor(0, 0, 0, 26), QColor(255, 255, 255, 38)};
  }
  return {};
}

}  // namespace

bool isDark(QPalette const& palette) {
  return palette.color(QPalette::Active, QPalette::Window).lightness() < 128;
}

QColor toQt(view::Colour const& colour) {
  return QColor::fromRgbF(static_cast<float>(colour.red), static_cast<float>(colour.green),
                          static_cast<float>(colour.blue), static_cast<float>(colour.alpha));
}

QColor toQt(view::SystemColour colour, QPalette const& palette) {
  auto const pair = pairOf(colour);
  return isDark(palette) ? pair.dark : pair.light;
}

QColor toQt(view::Paint const& paint, QPalette const& palette) {
  auto const colour = std::visit(Overloaded{
                                     [&](view::SystemColour system) { return toQt(system, palette); },
                                     [](view::Colour const& own) { return toQt(own); },
                                 },
                                 paint.colour);
  return faded(colour, paint.opacity);
}

QColor faded(QColor colour, double opacity) {
  colour.setAlphaF(colour.alphaF() * static_cast<float>(opacity));
  return colour;
}

QPalette standardPalette(bool isDark) {
  auto const of = [isDark](view::SystemColour colour) {
    auto const pair = pairOf(colour);
    return isDark ? pair.dark : pair.light;
  };
  QColor const text = isDark ? QColor(0xDD, 0xDD, 0xDD) : QColor(0x26, 0x26, 0x26);
  QPalette palette(of(view::SystemColour::controlBackground), of(view::SystemColour::windowBackground));
  for (auto const role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, faded(text, 0.4));
  }
  palette.setColor(QPalette::Base, of(view::SystemColour::controlBackground));
  palette.setColor(QPalette::ToolTipBase, of(view::SystemColour::controlBackground));
  palette.setColor(QPalette::PlaceholderText, of(view::SystemColour::tertiary));
  palette.setColor(QPalette::Highlight, of(view::SystemColour::accent));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

}  // namespace morla::linux
