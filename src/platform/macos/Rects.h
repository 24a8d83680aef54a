#pragma once

#import <Foundation/Foundation.h>

#include "base/Geometry.h"

/// AppKit's coordinates are the core's bottom-left ones, in points; only the types differ.
namespace morla::macos {

[[nodiscard]] inline NSPoint nsPoint(BottomLeftPoint point) {
  return NSMakePoint(point.x, point.y);
}
[[nodiscard]] inline NSSize nsSize(Size size) {
  return NSMakeSize(size.width, size.height);
}
[[nodiscard]] inline NSRect nsRect(BottomLeftRect rect) {
  return NSMakeRect(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}
[[nodiscard]] inline BottomLeftPoint bottomLeft(NSPoint point) {
  return {point.x, point.y};
}
[[nodiscard]] inline BottomLeftRect bottomLeft(NSRect rect) {
  return {{rect.origin.x, rect.origin.y}, {rect.size.width, rect.size.height}};
}

}  // namespace morla::macos
