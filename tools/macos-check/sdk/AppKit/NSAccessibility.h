#pragma once

#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

typedef NSString* NSAccessibilityRole;
DECLARE_EXTERN NSAccessibilityRole const NSAccessibilityGroupRole;
DECLARE_EXTERN NSAccessibilityRole const NSAccessibilityImageRole;

@protocol NSAccessibility <NSObject>
@property(getter=isAccessibilityElement) BOOL accessibilityElement;
@property(getter=isAccessibilityHidden) BOOL accessibilityHidden;
@property(nullable, copy) NSString* accessibilityLabel;
@property(nullable, copy) NSAccessibilityRole accessibilityRole;
@end

#pragma clang assume_nonnull end
