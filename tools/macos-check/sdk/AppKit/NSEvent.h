#pragma once

#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@class NSWindow;

typedef DECLARE_ENUM(NSUInteger, NSEventType){
    NSEventTypeLeftMouseDown = 1, NSEventTypeLeftMouseUp = 2,      NSEventTypeRightMouseDown = 3,
    NSEventTypeRightMouseUp = 4,  NSEventTypeLeftMouseDragged = 6, NSEventTypeOtherMouseDown = 25,
    NSEventTypeOtherMouseUp = 26,
};

typedef DECLARE_OPTIONS(unsigned long long, NSEventMask){
    NSEventMaskLeftMouseDown = 1ULL << NSEventTypeLeftMouseDown,
    NSEventMaskLeftMouseUp = 1ULL << NSEventTypeLeftMouseUp,
    NSEventMaskRightMouseDown = 1ULL << NSEventTypeRightMouseDown,
    NSEventMaskLeftMouseDragged = 1ULL << NSEventTypeLeftMouseDragged,
};

@interface NSEvent : NSObject <NSCopying>
@property(readonly) NSEventType type;
@property(nullable, readonly, weak) NSWindow* window;
@property(readonly) NSPoint locationInWindow;
@property(class, readonly) NSPoint mouseLocation;
+ (nullable id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                            handler:(NSEvent* _Nullable (^)(NSEvent* event))block;
+ (void)removeMonitor:(id)eventMonitor;
@end

#pragma clang assume_nonnull end
