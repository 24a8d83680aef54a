#pragma once

#import <AppKit/AppKit.h>

#include <string_view>

#include "view/Style.h"

NS_ASSUME_NONNULL_BEGIN

/// The core's colours, fonts and texts as AppKit's. Main thread.
namespace morla::macos {

/// Without the paint's opacity, which is the business of the view that shows it: a system colour stays one that
/// follows the appearance.
[[nodiscard]] NSColor* colour(view::Paint const& paint);
[[nodiscard]] NSFontWeight nativeWeight(view::Weight weight);
[[nodiscard]] NSFont* font(view::Font const& font);

/// What can be shown of `text`: nothing for control characters, replacement characters for what is not UTF-8.
[[nodiscard]] NSString* shownText(std::string_view text);

}  // namespace morla::macos

NS_ASSUME_NONNULL_END
