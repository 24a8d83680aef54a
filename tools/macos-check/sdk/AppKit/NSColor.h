#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@interface NSColor : NSObject <NSCopying>
+ (NSColor*)colorWithSRGBRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
@property(class, strong, readonly) NSColor* clearColor;
@property(class, strong, readonly) NSColor* whiteColor;
@property(class, strong, readonly) NSColor* labelColor;
@property(class, strong, readonly) NSColor* secondaryLabelColor;
@property(class, strong, readonly) NSColor* tertiaryLabelColor;
@property(class, strong, readonly) NSColor* controlAccentColor;
@property(class, strong, readonly) NSColor* systemRedColor;
@property(class, strong, readonly) NSColor* systemOrangeColor;
@property(class, strong, readonly) NSColor* systemGreenColor;
@property(class, strong, readonly) NSColor* systemGrayColor;
@property(class, strong, readonly) NSColor* windowBackgroundColor;
@property(class, strong, readonly) NSColor* controlBackgroundColor;
@property(class, strong, readonly) NSColor* separatorColor;
@property(readonly) CGColorRef CGColor RETURNS_INNER_POINTER;
- (void)setFill;
- (void)setStroke;
@end

#pragma clang assume_nonnull end
