#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <support/Declare.h>

// `id`, `Class`, `SEL` and `Protocol` are known to the compiler.

#if defined(__arm64__)
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr

#if defined(__LP64__)
typedef long NSInteger;
typedef unsigned long NSUInteger;
#endif

#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_UNAVAILABLE __attribute__((unavailable))

#pragma clang assume_nonnull begin

@protocol NSObject
- (Class)class;
- (BOOL)isKindOfClass:(Class)aClass;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject>
- (instancetype)init NS_DESIGNATED_INITIALIZER;
+ (instancetype)alloc;
+ (Class)class;
+ (BOOL)isSubclassOfClass:(Class)aClass;
@end

#pragma clang assume_nonnull end
