#pragma once

#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

typedef NSString* NSAccessibilityRole;
DECLARE_EXTERN NSAccessibilityRole const NSAccessibilityImageRole;

@protocol NSAccessibility <NSObject>
@property(getter=isAccessibilityElement) BOOL accessibilityElement;
@property(nullable, copy) NSString* accessibilityLabel;
@property(nullable, copy) NSAccessibilityRole accessibilityRole;
@end

#pragma clang assume_nonnull end
