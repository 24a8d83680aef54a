#pragma once

#include <AppKit/NSButton.h>

#pragma clang assume_nonnull begin

@interface NSStatusBarButton : NSButton
@end

typedef NSString* NSStatusItemAutosaveName;

@interface NSStatusItem : NSObject
@property(nullable, readonly, strong) NSStatusBarButton* button;
@property(null_resettable, copy) NSStatusItemAutosaveName autosaveName;
@end

@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

#pragma clang assume_nonnull end
