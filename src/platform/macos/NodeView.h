#pragma once

#import <AppKit/AppKit.h>

#include "view/View.h"

NS_ASSUME_NONNULL_BEGIN

/// Shows a tree of nodes, centred.
@interface MORLANodeView : NSView
- (void)showNode:(morla::view::Node)node;
@end

NS_ASSUME_NONNULL_END
