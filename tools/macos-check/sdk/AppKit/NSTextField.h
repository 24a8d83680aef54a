#pragma once

#include <AppKit/NSControl.h>

#pragma clang assume_nonnull begin

@protocol NSTextFieldDelegate <NSControlTextEditingDelegate>
@end

@interface NSTextField : NSControl
+ (instancetype)labelWithString:(NSString*)stringValue;
+ (instancetype)textFieldWithString:(NSString*)stringValue;
@property(nullable, copy) NSString* placeholderString;
@property(nullable, copy) NSColor* textColor;
@property(nullable, weak) id<NSTextFieldDelegate> delegate;
@property NSInteger maximumNumberOfLines;
@end

#pragma clang assume_nonnull end
