#pragma once

#include <Foundation/NSData.h>
#include <Foundation/NSObject.h>

#pragma clang assume_nonnull begin

typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };

@interface NSString : NSObject <NSCopying>
- (nullable instancetype)initWithBytes:(void const*)bytes length:(NSUInteger)len encoding:(NSStringEncoding)encoding;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)encoding allowLossyConversion:(BOOL)lossy;
@end

#pragma clang assume_nonnull end
