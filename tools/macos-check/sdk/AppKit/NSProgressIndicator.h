#pragma once

#include <AppKit/NSControl.h>

#pragma clang assume_nonnull begin

typedef DECLARE_ENUM(NSUInteger, NSProgressIndicatorStyle){
    NSProgressIndicatorStyleSpinning = 1,
};

@interface NSProgressIndicator : NSView
@property(getter=isIndeterminate) BOOL indeterminate;
@property NSControlSize controlSize;
@property NSProgressIndicatorStyle style;
- (void)startAnimation:(nullable id)sender;
@end

#pragma clang assume_nonnull end
