#pragma once

#include <AppKit/NSResponder.h>

#pragma clang assume_nonnull begin

@class NSEvent;

typedef DECLARE_ENUM(NSInteger, NSApplicationActivationPolicy){
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1,
};

@interface NSApplication : NSResponder
@property(class, readonly, strong) __kindof NSApplication* sharedApplication;
@property(nullable, readonly, strong) NSEvent* currentEvent;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (void)run;
- (void)terminate:(nullable id)sender;
- (void)activate AVAILABLE_FROM(14.0);
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps DEPRECATED_SINCE(27.0, "Use activate instead.");
@end

#pragma clang assume_nonnull end
