#pragma once

#include <CoreFoundation/CoreFoundation.h>

#pragma clang assume_nonnull begin

typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;

static inline NSPoint NSMakePoint(CGFloat x, CGFloat y) {
  NSPoint p = {x, y};
  return p;
}
static inline NSSize NSMakeSize(CGFloat w, CGFloat h) {
  NSSize s = {w, h};
  return s;
}
static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat w, CGFloat h) {
  NSRect r = {{x, y}, {w, h}};
  return r;
}

#pragma clang assume_nonnull end
