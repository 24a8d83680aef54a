#pragma once

#include <AppKit/NSText.h>

#pragma clang assume_nonnull begin

typedef NSInteger NSControlStateValue;
static NSControlStateValue const NSControlStateValueOff = 0;
static NSControlStateValue const NSControlStateValueOn = 1;

typedef DECLARE_ENUM(NSUInteger, NSControlSize){
    NSControlSizeRegular = 0,
    NSControlSizeSmall = 1,
    NSControlSizeMini = 2,
};

@interface NSCell : NSObject <NSCopying>
@end

@interface NSControl : NSView
@property(nullable, weak) id target;
@property(nullable) SEL action;
@property(getter=isEnabled) BOOL enabled;
@property(nullable, strong) __kindof NSCell* cell;
@property(copy) NSString* stringValue;
@property(nullable, strong) NSFont* font;
@property NSTextAlignment alignment;
@property NSLineBreakMode lineBreakMode;
@property BOOL usesSingleLineMode;
- (nullable NSText*)currentEditor;
@end

@protocol NSControlTextEditingDelegate <NSObject>
@optional
- (void)controlTextDidChange:(NSNotification*)obj;
- (BOOL)control:(NSControl*)control textView:(NSTextView*)textView doCommandBySelector:(SEL)commandSelector;
@end

#pragma clang assume_nonnull end
