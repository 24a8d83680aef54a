#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@class NSWindow;

typedef DECLARE_ENUM(NSUInteger, NSEventType){
    NSEventTypeLeftMouseDown = 1, NSEventTypeLeftMouseUp = 2,      NSEventTypeRightMouseDown = 3,
    NSEventTypeRightMouseUp = 4,  NSEventTypeLeftMouseDragged = 6, NSEventTypeKeyDown = 10,
    NSEventTypeKeyUp = 11,        NSEventTypeFlagsChanged = 12,    NSEventTypeOtherMouseDown = 25,
    NSEventTypeOtherMouseUp = 26,
};

typedef DECLARE_OPTIONS(unsigned long long, NSEventMask){
    NSEventMaskLeftMouseDown = 1ULL << NSEventTypeLeftMouseDown,
    NSEventMaskLeftMouseUp = 1ULL << NSEventTypeLeftMouseUp,
    NSEventMaskRightMouseDown = 1ULL << NSEventTypeRightMouseDown,
    NSEventMaskLeftMouseDragged = 1ULL << NSEventTypeLeftMouseDragged,
    NSEventMaskKeyDown = 1ULL << NSEventTypeKeyDown,
    NSEventMaskKeyUp = 1ULL << NSEventTypeKeyUp,
};

typedef DECLARE_OPTIONS(NSUInteger, NSEventModifierFlags){
    NSEventModifierFlagCapsLock = 1 << 16, NSEventModifierFlagShift = 1 << 17,   NSEventModifierFlagControl = 1 << 18,
    NSEventModifierFlagOption = 1 << 19,   NSEventModifierFlagCommand = 1 << 20,
};

@interface NSEvent : NSObject <NSCopying>
@property(readonly) NSEventType type;
@property(nullable, readonly, weak) NSWindow* window;
@property(readonly) NSPoint locationInWindow;
@property(class, readonly) NSPoint mouseLocation;
@property(readonly) NSEventModifierFlags modifierFlags;
@property(readonly) unsigned short keyCode;
@property(nullable, readonly, copy) NSString* charactersIgnoringModifiers;
@property(getter=isARepeat, readonly) BOOL ARepeat;
+ (nullable NSEvent*)eventWithCGEvent:(CGEventRef)cgEvent;
+ (nullable id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent* event))block;
+ (nullable id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                            handler:(NSEvent* _Nullable (^)(NSEvent* event))block;
+ (void)removeMonitor:(id)eventMonitor;
@end

#pragma clang assume_nonnull end
