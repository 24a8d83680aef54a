#include "platform/macos/nodes/Views.h"

#import <QuartzCore/QuartzCore.h>

#include <algorithm>

#include "platform/macos/DrawingPainter.h"
#include "platform/macos/Rects.h"

@implementation MORLAPlaceView

- (void)setConcealed:(BOOL)concealed {
  _concealed = concealed;
  // Not `hidden`: a stack would close the gap.
  self.alphaValue = concealed ? 0 : 1;
  [self setAccessibilityHidden:concealed];
}

- (nullable NSView*)hitTest:(NSPoint)point {
  if (self.concealed) return nil;
  NSView* const hit = [super hitTest:point];
  if (hit == nil) return nil;
  switch (self.clicks) {
    case morla::macos::Clicks::none:
      return self;
    case morla::macos::Clicks::children:
      return hit == self.content || hit == self.background ? self : hit;
    case morla::macos::Clicks::all:
      return hit == self.background ? self : hit;
  }
  return hit;
}

- (BOOL)mouseDownCanMoveWindow {
  return YES;
}

- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event {
  return YES;
}

@end

@implementation MORLAShapeView

- (instancetype)initWithFrame:(NSRect)frameRect {
  self = [super initWithFrame:frameRect];
  if (self == nil) return nil;
  _fill = [NSColor clearColor];
  self.wantsLayer = YES;
  return self;
}

- (void)setFill:(NSColor*)fill {
  _fill = fill;
  self.needsDisplay = YES;
}

- (void)setRadius:(CGFloat)radius {
  _radius = radius;
  self.needsDisplay = YES;
}

- (void)setHasContinuousCorners:(BOOL)hasContinuousCorners {
  _hasContinuousCorners = hasContinuousCorners;
  self.needsDisplay = YES;
}

- (BOOL)wantsUpdateLayer {
  return YES;
}

// Also called when the appearance has changed, and then with the new one as the current: a layer keeps plain colours.
- (void)updateLayer {
  CALayer* const layer = self.layer;
  NSSize const size = self.bounds.size;
  layer.backgroundColor = self.fill.CGColor;
  layer.cornerRadius = std::min(self.radius, std::min(size.width, size.height) / 2);
  layer.cornerCurve = self.hasContinuousCorners ? kCACornerCurveContinuous : kCACornerCurveCircular;
}

- (void)setFrameSize:(NSSize)newSize {
  [super setFrameSize:newSize];
  self.needsDisplay = YES;
}

@end

@implementation MORLACanvasView {
  morla::view::Drawing _drawing;
}

- (void)showDrawing:(morla::view::Drawing const&)drawing {
  _drawing = drawing;
  [self invalidateIntrinsicContentSize];
  self.needsDisplay = YES;
}

- (NSSize)intrinsicContentSize {
  return morla::macos::nsSize(_drawing.size);
}

- (void)drawRect:(NSRect)dirtyRect {
  morla::macos::draw(_drawing, self.bounds.origin);
}

@end

@implementation MORLAButton
- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event {
  return YES;
}
@end

@implementation MORLASwitch
- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event {
  return YES;
}
@end

@implementation MORLAEditField
- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event {
  return YES;
}
@end

@implementation MORLAPopUpButton

- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event {
  return YES;
}

- (void)menuWillOpen:(NSMenu*)menu {
  _open = YES;
}

- (void)menuDidClose:(NSMenu*)menu {
  _open = NO;
  if (self.onClose != nil) self.onClose();
}

@end
