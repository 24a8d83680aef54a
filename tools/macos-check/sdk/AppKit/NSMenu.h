#pragma once

#include <AppKit/NSControl.h>

#pragma clang assume_nonnull begin

@interface NSMenuItem : NSObject <NSCopying>
- (instancetype)initWithTitle:(NSString*)string
                       action:(nullable SEL)selector
                keyEquivalent:(NSString*)charCode NS_DESIGNATED_INITIALIZER;
@property NSControlStateValue state;
@property(nullable, weak) id target;
@property(nullable, strong) id representedObject;
@end

@class NSMenu;

@protocol NSMenuDelegate <NSObject>
@optional
- (void)menuWillOpen:(NSMenu*)menu;
- (void)menuDidClose:(NSMenu*)menu;
@end

@interface NSMenu : NSObject <NSCopying>
- (instancetype)initWithTitle:(NSString*)title NS_DESIGNATED_INITIALIZER;
@property(nullable, weak) id<NSMenuDelegate> delegate;
- (void)addItem:(NSMenuItem*)newItem;
- (void)removeAllItems;
- (BOOL)popUpMenuPositioningItem:(nullable NSMenuItem*)item atLocation:(NSPoint)location inView:(nullable NSView*)view;
- (void)cancelTrackingWithoutAnimation;
@end

#pragma clang assume_nonnull end
