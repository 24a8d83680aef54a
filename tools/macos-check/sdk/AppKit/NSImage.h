#pragma once

#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@interface NSImage : NSObject <NSCopying>
+ (NSImage*)imageWithSize:(NSSize)size
                  flipped:(BOOL)drawingHandlerShouldBeCalledWithFlippedContext
           drawingHandler:(BOOL (^)(NSRect dstRect))drawingHandler;
@end

#pragma clang assume_nonnull end
