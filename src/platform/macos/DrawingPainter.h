#pragma once

#import <AppKit/AppKit.h>

#include "view/Drawing.h"

NS_ASSUME_NONNULL_BEGIN

/// Draws into the current graphics context, whose origin is at the bottom left. Nothing here knows of pixels: AppKit
/// scales paths to the display's own resolution.
namespace morla::macos {

/// With the drawing's bottom-left corner at `origin`. Any thread.
void draw(view::Drawing const& drawing, NSPoint origin);

/// A drawing as an image that is drawn anew for each resolution; in its own colours, never tinted by the system.
[[nodiscard]] NSImage* makeImage(view::Drawing drawing);

}  // namespace morla::macos

NS_ASSUME_NONNULL_END
