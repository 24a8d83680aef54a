#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

typedef NSString* CALayerCornerCurve;
DECLARE_EXTERN CALayerCornerCurve const kCACornerCurveCircular;
DECLARE_EXTERN CALayerCornerCurve const kCACornerCurveContinuous;

@interface CALayer : NSObject
@property(nullable) CGColorRef backgroundColor;
@property CGFloat cornerRadius;
@property(copy) CALayerCornerCurve cornerCurve;
@end

#pragma clang assume_nonnull end
