#pragma once

#include <AppKit/NSView.h>

#pragma clang assume_nonnull begin

typedef DECLARE_ENUM(NSUInteger, NSBackingStoreType){
    NSBackingStoreBuffered = 2,
};

typedef DECLARE_OPTIONS(NSUInteger, NSWindowStyleMask){
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskTitled = 1 << 0,
    NSWindowStyleMaskClosable = 1 << 1,
    NSWindowStyleMaskNonactivatingPanel = 1 << 7,
    NSWindowStyleMaskFullSizeContentView = 1 << 15,
};

typedef DECLARE_OPTIONS(NSUInteger, NSWindowCollectionBehavior){
    NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
    NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8,
};

typedef DECLARE_ENUM(NSInteger, NSWindowTitleVisibility){
    NSWindowTitleVisible = 0,
    NSWindowTitleHidden = 1,
};

typedef NSInteger NSWindowLevel;

@protocol NSWindowDelegate <NSObject>
@optional
- (void)windowWillClose:(NSNotification*)notification;
@end

@interface NSWindow : NSResponder <NSUserInterfaceItemIdentification, NSAccessibility>
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag NS_DESIGNATED_INITIALIZER;

@property(copy) NSString* title;
@property NSWindowTitleVisibility titleVisibility;
@property BOOL titlebarAppearsTransparent;
@property(nullable, strong) __kindof NSView* contentView;
@property(nullable, weak) id<NSWindowDelegate> delegate;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property(getter=isOpaque) BOOL opaque;
@property(copy, null_resettable) NSColor* backgroundColor;
@property BOOL hasShadow;
@property NSWindowLevel level;
@property NSWindowCollectionBehavior collectionBehavior;
@property(getter=isMovableByWindowBackground) BOOL movableByWindowBackground;
@property BOOL hidesOnDeactivate;
@property BOOL allowsToolTipsWhenApplicationIsInactive;
@property(readonly) BOOL canBecomeKeyWindow;
@property(readonly) BOOL canBecomeMainWindow;

@property(readonly) NSRect frame;
- (NSRect)frameRectForContentRect:(NSRect)contentRect;
- (void)setFrame:(NSRect)frameRect display:(BOOL)flag;
- (void)setFrameOrigin:(NSPoint)point;
- (NSRect)convertRectToScreen:(NSRect)rect;

@property(readonly, getter=isVisible) BOOL visible;
- (void)orderFrontRegardless;
- (void)orderOut:(nullable id)sender;
- (void)close;
- (void)sendEvent:(NSEvent*)event;
@end

DECLARE_EXTERN NSNotificationName NSWindowDidMoveNotification;

@interface NSPanel : NSWindow
@end

#pragma clang assume_nonnull end
