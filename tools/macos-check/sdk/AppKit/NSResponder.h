#pragma once

#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@protocol NSStandardKeyBindingResponding <NSObject>
@optional
- (void)insertNewline:(nullable id)sender;
@end

@interface NSResponder : NSObject
@end

@interface NSResponder (NSStandardKeyBindingMethods) <NSStandardKeyBindingResponding>
@end

typedef NSString* NSUserInterfaceItemIdentifier;

@protocol NSUserInterfaceItemIdentification
@property(nullable, copy) NSUserInterfaceItemIdentifier identifier;
@end

#pragma clang assume_nonnull end
