#pragma once

#include <AppKit/NSAccessibility.h>
#include <AppKit/NSColor.h>
#include <AppKit/NSLayoutConstraint.h>
#include <AppKit/NSResponder.h>

#pragma clang assume_nonnull begin

@class CALayer, NSEvent, NSWindow;

typedef DECLARE_ENUM(NSInteger, NSWindowOrderingMode){
    NSWindowBelow = -1,
};

@interface NSView : NSResponder <NSUserInterfaceItemIdentification, NSAccessibility>
- (instancetype)initWithFrame:(NSRect)frameRect NS_DESIGNATED_INITIALIZER;
@property(nullable, readonly, assign) NSWindow* window;
@property(copy) NSArray<__kindof NSView*>* subviews;
- (void)addSubview:(NSView*)view;
- (void)addSubview:(NSView*)view positioned:(NSWindowOrderingMode)place relativeTo:(nullable NSView*)otherView;
- (void)removeFromSuperview;

@property NSRect bounds;
- (void)setFrameSize:(NSSize)newSize;
- (NSRect)convertRect:(NSRect)rect toView:(nullable NSView*)view;

@property CGFloat alphaValue;
@property BOOL needsDisplay;
- (void)drawRect:(NSRect)dirtyRect;
@property BOOL wantsLayer;
@property(nullable, strong) CALayer* layer;
@property(readonly) BOOL wantsUpdateLayer;
- (void)updateLayer;

- (nullable NSView*)hitTest:(NSPoint)point;
@property(readonly) BOOL mouseDownCanMoveWindow;
- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event;
@property(nullable, copy) NSString* toolTip;
@end

// Auto Layout.
@interface NSView (NSConstraintBasedLayoutCoreMethods)
@property(readonly, strong) NSLayoutXAxisAnchor* leadingAnchor;
@property(readonly, strong) NSLayoutXAxisAnchor* trailingAnchor;
@property(readonly, strong) NSLayoutYAxisAnchor* topAnchor;
@property(readonly, strong) NSLayoutYAxisAnchor* bottomAnchor;
@property(readonly, strong) NSLayoutDimension* widthAnchor;
@property(readonly, strong) NSLayoutDimension* heightAnchor;
@property(readonly, strong) NSLayoutXAxisAnchor* centerXAnchor;
@property(readonly, strong) NSLayoutYAxisAnchor* centerYAnchor;
@end
@interface NSView (NSConstraintBasedLayoutInstallingConstraints)
@property BOOL translatesAutoresizingMaskIntoConstraints;
@end
@interface NSView (NSConstraintBasedLayoutLayering)
@property(readonly) NSSize intrinsicContentSize;
- (void)invalidateIntrinsicContentSize;
- (void)setContentHuggingPriority:(NSLayoutPriority)priority forOrientation:(NSLayoutConstraintOrientation)orientation;
- (void)setContentCompressionResistancePriority:(NSLayoutPriority)priority
                                 forOrientation:(NSLayoutConstraintOrientation)orientation;
@end
@interface NSView (NSConstraintBasedLayoutFittingSize)
@property(readonly) NSSize fittingSize;
@end

#pragma clang assume_nonnull end
