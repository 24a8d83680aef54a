#include "platform/macos/nodes/Look.h"

#include "base/Overloaded.h"
#include "platform/macos/Text.h"
#include "platform/macos/nodes/DisplayText.h"

namespace morla::macos {
namespace {

NSColor* systemColour(view::SystemColour name) {
  switch (name) {
    case view::SystemColour::primary:
      return [NSColor labelColor];
    case view::SystemColour::secondary:
      return [NSColor secondaryLabelColor];
    case view::SystemColour::tertiary:
      return [NSColor tertiaryLabelColor];
    case view::SystemColour::accent:
      return [NSColor controlAccentColor];
    case view::SystemColour::red:
      return [NSColor systemRedColor];
    case view::SystemColour::orange:
      return [NSColor systemOrangeColor];
    case view::SystemColour::green:
      return [NSColor systemGreenColor];
    case view::SystemColour::grey:
      return [NSColor systemGrayColor];
    case view::SystemColour::windowBackground:
      return [NSColor windowBackgroundColor];
    case view::SystemColour::controlBackground:
      return [NSColor controlBackgroundColor];
    case view::SystemColour::separator:
      return [NSColor separatorColor];
  }
  return [NSColor labelColor];
}

}  // namespace

NSColor* colour(view::Paint const& paint) {
  return std::visit(Overloaded{
                        [](view::SystemColour name) { return systemColour(name); },
                        [](view::Colour const& own) {
                          return [NSColor colorWithSRGBRed:own.red green:own.green blue:own.blue alpha:own.alpha];
                        },
                    },
                    paint.colour);
}

NSFontWeight nativeWeight(view::Weight weight) {
  switch (weight) {
    case view::Weight::regular:
      return NSFontWeightRegular;
    case view::Weight::medium:
      return NSFontWeightMedium;
    case view::Weight::semibold:
      return NSFontWeightSemibold;
    case view::Weight::bold:
      return NSFontWeightBold;
  }
  return NSFontWeightRegular;
}

NSFont* font(view::Font const& font) {
  return [NSFont systemFontOfSize:font.size weight:nativeWeight(font.weight)];
}

NSString* shownText(std::string_view text) {
  return labelText(displayable(text));
}

}  // namespace morla::macos
