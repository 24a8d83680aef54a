#pragma once

#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

typedef CGFloat NSFontWeight;
DECLARE_EXTERN const NSFontWeight NSFontWeightRegular;
DECLARE_EXTERN const NSFontWeight NSFontWeightMedium;
DECLARE_EXTERN const NSFontWeight NSFontWeightSemibold;
DECLARE_EXTERN const NSFontWeight NSFontWeightBold;

@interface NSFont : NSObject <NSCopying>
+ (NSFont*)systemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight;
@end

#pragma clang assume_nonnull end
