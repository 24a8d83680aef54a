#pragma once

#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@interface NSBezierPath : NSObject <NSCopying>
+ (NSBezierPath*)bezierPath;
+ (NSBezierPath*)bezierPathWithOvalInRect:(NSRect)rect;
+ (NSBezierPath*)bezierPathWithRoundedRect:(NSRect)rect xRadius:(CGFloat)xRadius yRadius:(CGFloat)yRadius;
- (void)moveToPoint:(NSPoint)point;
- (void)lineToPoint:(NSPoint)point;
@property CGFloat lineWidth;
- (void)stroke;
- (void)fill;
@end

#pragma clang assume_nonnull end
