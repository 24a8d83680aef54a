#pragma once

#include <AppKit/NSControl.h>
#include <AppKit/NSImage.h>

#pragma clang assume_nonnull begin

@interface NSButton : NSControl
+ (instancetype)buttonWithTitle:(NSString*)title target:(nullable id)target action:(nullable SEL)action;
@property(copy) NSString* title;
@property(copy) NSAttributedString* attributedTitle;
@property(nullable, copy) NSColor* bezelColor;
@property(nullable, strong) NSImage* image;
@end

#pragma clang assume_nonnull end
