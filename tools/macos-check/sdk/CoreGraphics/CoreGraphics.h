#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <stdint.h>

#pragma clang assume_nonnull begin

typedef struct CGColor* CGColorRef;
typedef struct BRIDGED_TO(id) __CGEvent* CGEventRef;
typedef struct __CGEventTapProxy* CGEventTapProxy;

typedef DECLARE_ENUM(uint32_t, CGEventType){
    kCGEventKeyDown = 10,
    kCGEventKeyUp = 11,
    kCGEventFlagsChanged = 12,
    kCGEventTapDisabledByTimeout = 0xFFFFFFFE,
    kCGEventTapDisabledByUserInput = 0xFFFFFFFF,
};
typedef uint64_t CGEventMask;
typedef DECLARE_ENUM(uint32_t, CGEventField){
    kCGKeyboardEventAutorepeat = 8,
};
typedef DECLARE_ENUM(uint32_t, CGEventTapLocation){
    kCGSessionEventTap = 1,
};
typedef DECLARE_ENUM(uint32_t, CGEventTapPlacement){
    kCGHeadInsertEventTap = 0,
};
typedef DECLARE_ENUM(uint32_t, CGEventTapOptions){
    kCGEventTapOptionDefault = 0,
};
typedef CGEventRef _Nullable (*CGEventTapCallBack)(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                                                   void* _Nullable userInfo);

DECLARE_EXTERN CFMachPortRef _Nullable CGEventTapCreate(CGEventTapLocation tap, CGEventTapPlacement place,
                                                        CGEventTapOptions options, CGEventMask eventsOfInterest,
                                                        CGEventTapCallBack callback,
                                                        void* _Nullable userInfo) RETURNS_RETAINED_CF;
DECLARE_EXTERN void CGEventTapEnable(CFMachPortRef tap, bool enable);
DECLARE_EXTERN int64_t CGEventGetIntegerValueField(CGEventRef _Nullable event, CGEventField field);

#pragma clang assume_nonnull end
