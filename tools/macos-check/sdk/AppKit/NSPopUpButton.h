#pragma once

#include <AppKit/NSButton.h>
#include <AppKit/NSMenu.h>

#pragma clang assume_nonnull begin

@interface NSActionCell : NSCell
@end

@interface NSButtonCell : NSActionCell
@end

@interface NSMenuItemCell : NSButtonCell
@property(nullable, strong) NSMenuItem* menuItem;
@end

@interface NSPopUpButtonCell : NSMenuItemCell
@property BOOL usesItemFromMenu;
@end

@interface NSPopUpButton : NSButton
- (instancetype)initWithFrame:(NSRect)buttonFrame pullsDown:(BOOL)flag;
@property(nullable, strong) NSMenu* menu;
@property(readonly) NSInteger indexOfSelectedItem;
- (void)selectItem:(nullable NSMenuItem*)item;
- (void)selectItemAtIndex:(NSInteger)index;
@end

#pragma clang assume_nonnull end
