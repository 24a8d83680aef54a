#pragma once

#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@interface NSColor : NSObject <NSCopying>
+ (NSColor*)colorWithSRGBRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
@property(class, strong, readonly) NSColor* clearColor;
- (void)setFill;
- (void)setStroke;
@end

#pragma clang assume_nonnull end
