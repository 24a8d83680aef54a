#pragma once

#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(readonly) NSRect frame;
@end

#pragma clang assume_nonnull end
