#pragma once

#include <Foundation/NSDictionary.h>
#include <Foundation/NSString.h>

#pragma clang assume_nonnull begin

typedef NSString* NSAttributedStringKey;

@interface NSAttributedString : NSObject <NSCopying>
@end

@interface NSAttributedString (NSExtendedAttributedString)
- (instancetype)initWithString:(NSString*)str attributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attrs;
@end

#pragma clang assume_nonnull end
