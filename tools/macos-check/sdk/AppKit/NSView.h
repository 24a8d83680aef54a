#pragma once

#include <AppKit/NSAccessibility.h>
#include <AppKit/NSImage.h>
#include <AppKit/NSResponder.h>

#pragma clang assume_nonnull begin

@class NSEvent, NSWindow;

@interface NSView : NSResponder <NSUserInterfaceItemIdentification, NSAccessibility>
- (instancetype)initWithFrame:(NSRect)frameRect NS_DESIGNATED_INITIALIZER;
@property(nullable, readonly, assign) NSWindow* window;
@property NSRect bounds;
- (NSRect)convertRect:(NSRect)rect toView:(nullable NSView*)view;
@property BOOL needsDisplay;
- (void)drawRect:(NSRect)dirtyRect;
- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event;
@end

@interface NSControl : NSView
@property(nullable, weak) id target;
@property(nullable) SEL action;
@end

typedef NSInteger NSControlStateValue;
static NSControlStateValue const NSControlStateValueOff = 0;
static NSControlStateValue const NSControlStateValueOn = 1;

@interface NSButton : NSControl
@property(nullable, strong) NSImage* image;
@end

#pragma clang assume_nonnull end
