#pragma once

#include <Foundation/NSObject.h>

#pragma clang assume_nonnull begin

@interface NSArray<__covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
@property(readonly) NSUInteger count;
@property(nullable, nonatomic, readonly) ObjectType firstObject;
+ (instancetype)array;
+ (instancetype)arrayWithObjects:(ObjectType const _Nonnull[_Nonnull])objects count:(NSUInteger)cnt;
- (ObjectType)objectAtIndexedSubscript:(NSUInteger)idx;
- (BOOL)containsObject:(ObjectType)anObject;
@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
- (void)addObject:(ObjectType)anObject;
@end

#pragma clang assume_nonnull end
