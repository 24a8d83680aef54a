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
