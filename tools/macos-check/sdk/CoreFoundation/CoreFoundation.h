#pragma once

#include <objc/objc.h>

#pragma clang assume_nonnull begin

typedef void const* CFTypeRef;
typedef unsigned long CFTypeID;
typedef unsigned char Boolean;
typedef const struct BRIDGED_TO(NSNumber) __CFNumber* CFNumberRef;

DECLARE_EXTERN CFTypeID CFGetTypeID(CFTypeRef cf);
DECLARE_EXTERN CFTypeID CFBooleanGetTypeID(void);
DECLARE_EXTERN Boolean CFNumberIsFloatType(CFNumberRef number);

typedef signed long CFIndex;
typedef const struct BRIDGED_TO(NSString) __CFString* CFStringRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef struct BRIDGED_TO(NSMachPort) __CFMachPort* CFMachPortRef;
typedef struct __CFRunLoop* CFRunLoopRef;
typedef struct __CFRunLoopSource* CFRunLoopSourceRef;
typedef CFStringRef CFRunLoopMode;

DECLARE_EXTERN void CFRelease(CFTypeRef cf);
DECLARE_EXTERN CFAllocatorRef const kCFAllocatorDefault;
DECLARE_EXTERN CFRunLoopSourceRef _Null_unspecified CFMachPortCreateRunLoopSource(
    CFAllocatorRef _Null_unspecified allocator, CFMachPortRef _Null_unspecified port,
    CFIndex order) RETURNS_RETAINED_CF;
DECLARE_EXTERN void CFMachPortInvalidate(CFMachPortRef _Null_unspecified port);
DECLARE_EXTERN CFRunLoopMode const kCFRunLoopCommonModes;
DECLARE_EXTERN CFRunLoopRef _Null_unspecified CFRunLoopGetMain(void);
DECLARE_EXTERN void CFRunLoopAddSource(CFRunLoopRef _Null_unspecified rl, CFRunLoopSourceRef _Null_unspecified source,
                                       CFRunLoopMode _Null_unspecified mode);
DECLARE_EXTERN void CFRunLoopRemoveSource(CFRunLoopRef _Null_unspecified rl,
                                          CFRunLoopSourceRef _Null_unspecified source,
                                          CFRunLoopMode _Null_unspecified mode);

typedef double CGFloat;
struct CGPoint {
  CGFloat x;
  CGFloat y;
};
typedef struct CGPoint CGPoint;
struct CGSize {
  CGFloat width;
  CGFloat height;
};
typedef struct CGSize CGSize;
struct CGRect {
  CGPoint origin;
  CGSize size;
};
typedef struct CGRect CGRect;

#pragma clang assume_nonnull end
