#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/nodes/NodeContent.h"
#include "view/Drawing.h"

NS_ASSUME_NONNULL_BEGIN

// Our panels are used while another application is active, so in all of these the first click is a click and not spent
// on making the panel the key one.

/// The place of one node: its background and, on that, its content.
@interface MORLAPlaceView : NSView
/// Takes its place, shows nothing, and lets clicks through.
@property(nonatomic) BOOL concealed;
@property(nonatomic) morla::macos::Clicks clicks;
@property(nonatomic, weak, nullable) NSView* content;
@property(nonatomic, weak, nullable) NSView* background;
@end

/// A rounded rectangle that fills the view, in a colour that follows the appearance.
@interface MORLAShapeView : NSView
@property(nonatomic, strong) NSColor* fill;
/// In points; more than half of the shorter side counts as that half.
@property(nonatomic) CGFloat radius;
@property(nonatomic) BOOL hasContinuousCorners;
@end

/// A drawing, at its own size.
@interface MORLACanvasView : NSView
- (void)showDrawing:(morla::view::Drawing const&)drawing;
@end

@interface MORLAButton : NSButton
@end

@interface MORLASwitch : NSSwitch
@end

@interface MORLAEditField : NSTextField
@end

/// Knows whether its menu is open.
@interface MORLAPopUpButton : NSPopUpButton <NSMenuDelegate>
@property(nonatomic, readonly, getter=isOpen) BOOL open;
/// Called when the menu has closed, before the choice is told.
@property(nonatomic, copy, nullable) void (^onClose)(void);
@end

NS_ASSUME_NONNULL_END
