#pragma once

#include <AppKit/NSControl.h>
#include <AppKit/NSImage.h>

#pragma clang assume_nonnull begin

@interface NSImageView : NSControl
@property(nullable, strong) NSImage* image;
@property(nullable, copy) NSImageSymbolConfiguration* symbolConfiguration;
@property(nullable, copy) NSColor* contentTintColor;
@end

#pragma clang assume_nonnull end
