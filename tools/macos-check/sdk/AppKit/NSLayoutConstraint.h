#pragma once

#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

typedef float NSLayoutPriority;

typedef DECLARE_ENUM(NSInteger, NSLayoutConstraintOrientation){
    NSLayoutConstraintOrientationHorizontal = 0,
    NSLayoutConstraintOrientationVertical = 1,
};

typedef DECLARE_ENUM(NSInteger, NSLayoutAttribute){
    NSLayoutAttributeTop = 3,      NSLayoutAttributeBottom = 4,  NSLayoutAttributeLeading = 5,
    NSLayoutAttributeTrailing = 6, NSLayoutAttributeCenterX = 9, NSLayoutAttributeCenterY = 10,
};

@interface NSLayoutConstraint : NSObject
@property NSLayoutPriority priority;
@property CGFloat constant;
@property(getter=isActive) BOOL active;
+ (void)activateConstraints:(NSArray<NSLayoutConstraint*>*)constraints;
+ (void)deactivateConstraints:(NSArray<NSLayoutConstraint*>*)constraints;
@end

@class NSLayoutXAxisAnchor, NSLayoutYAxisAnchor, NSLayoutDimension;

@interface NSLayoutAnchor<AnchorType> : NSObject <NSCopying>
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor<AnchorType>*)anchor MUST_USE_RESULT;
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor<AnchorType>*)anchor constant:(CGFloat)c MUST_USE_RESULT;
- (NSLayoutConstraint*)constraintGreaterThanOrEqualToAnchor:(NSLayoutAnchor<AnchorType>*)anchor
                                                   constant:(CGFloat)c MUST_USE_RESULT;
@end

@interface NSLayoutXAxisAnchor : NSLayoutAnchor <NSLayoutXAxisAnchor*>
@end

@interface NSLayoutYAxisAnchor : NSLayoutAnchor <NSLayoutYAxisAnchor*>
@end

@interface NSLayoutDimension : NSLayoutAnchor <NSLayoutDimension*>
- (NSLayoutConstraint*)constraintEqualToConstant:(CGFloat)c MUST_USE_RESULT;
- (NSLayoutConstraint*)constraintGreaterThanOrEqualToConstant:(CGFloat)c MUST_USE_RESULT;
@end

#pragma clang assume_nonnull end
