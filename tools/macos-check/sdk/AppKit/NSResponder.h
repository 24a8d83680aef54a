#pragma once

#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@interface NSResponder : NSObject
@end

typedef NSString* NSUserInterfaceItemIdentifier;

@protocol NSUserInterfaceItemIdentification
@property(nullable, copy) NSUserInterfaceItemIdentifier identifier;
@end

#pragma clang assume_nonnull end
