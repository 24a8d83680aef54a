#include "platform/macos/NodeView.h"

#include <utility>

#include "platform/macos/DrawingPainter.h"
#include "platform/macos/Text.h"

@implementation MORLANodeView {
  morla::view::Node _node;
}

- (void)showNode:(morla::view::Node)node {
  _node = std::move(node);
  BOOL const isElement = !_node.accessibilityLabel.empty();
  [self setAccessibilityElement:isElement];
  [self setAccessibilityRole:isElement ? NSAccessibilityImageRole : nil];
  [self setAccessibilityLabel:isElement ? morla::macos::labelText(_node.accessibilityLabel) : nil];
  [self setNeedsDisplay:YES];
}

- (void)drawRect:(NSRect)dirtyRect {
  morla::macos::draw(_node, self.bounds);
}

// Our panels are used while another application is active; a click on them is a click, not a first attempt.
- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event {
  return YES;
}

@end
