#pragma once

#include <AppKit/NSView.h>

#pragma clang assume_nonnull begin

@interface NSMenuItem : NSObject <NSCopying>
- (instancetype)initWithTitle:(NSString*)string
                       action:(nullable SEL)selector
                keyEquivalent:(NSString*)charCode NS_DESIGNATED_INITIALIZER;
@property NSControlStateValue state;
@property(nullable, weak) id target;
@property(nullable, strong) id representedObject;
@end

@interface NSMenu : NSObject <NSCopying>
- (instancetype)initWithTitle:(NSString*)title NS_DESIGNATED_INITIALIZER;
- (void)addItem:(NSMenuItem*)newItem;
- (BOOL)popUpMenuPositioningItem:(nullable NSMenuItem*)item atLocation:(NSPoint)location inView:(nullable NSView*)view;
- (void)cancelTrackingWithoutAnimation;
@end

#pragma clang assume_nonnull end
