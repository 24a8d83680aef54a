#pragma once

#include <Foundation/NSObject.h>

#pragma clang assume_nonnull begin

@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
- (nullable ObjectType)objectForKeyedSubscript:(KeyType)key;
@end

#pragma clang assume_nonnull end
