#pragma once

#include <AppKit/NSControl.h>

#pragma clang assume_nonnull begin

@interface NSSwitch : NSControl
@property NSControlStateValue state;
@end

#pragma clang assume_nonnull end
