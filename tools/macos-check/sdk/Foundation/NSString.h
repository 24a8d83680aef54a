#pragma once

#include <Foundation/NSData.h>
#include <Foundation/NSObject.h>

#pragma clang assume_nonnull begin

typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };

@interface NSString : NSObject <NSCopying>
- (nullable instancetype)initWithBytes:(void const*)bytes length:(NSUInteger)len encoding:(NSStringEncoding)encoding;
- (BOOL)isEqualToString:(NSString*)aString;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)encoding allowLossyConversion:(BOOL)lossy;
@end

DECLARE_EXTERN Class _Nullable NSClassFromString(NSString* aClassName);

#pragma clang assume_nonnull end
