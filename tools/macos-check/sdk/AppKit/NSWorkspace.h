#pragma once

#include <Foundation/Foundation.h>
#include <sys/types.h>

#pragma clang assume_nonnull begin

typedef DECLARE_OPTIONS(NSUInteger, NSApplicationActivationOptions){
    NSApplicationActivateIgnoringOtherApps DEPRECATED_SINCE(
        14.0, "ignoringOtherApps is deprecated in macOS 14 and will have no effect.") = 1 << 1,
};

@interface NSRunningApplication : NSObject
@property(nullable, readonly, copy) NSString* localizedName;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(readonly) pid_t processIdentifier;
+ (nullable instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid;
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
@end

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
@property(nullable, readonly, strong) NSRunningApplication* frontmostApplication;
- (BOOL)openURL:(NSURL*)url;
@end

DECLARE_EXTERN NSNotificationName NSWorkspaceDidActivateApplicationNotification;

#pragma clang assume_nonnull end
