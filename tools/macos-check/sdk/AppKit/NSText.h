#pragma once

#include <AppKit/NSFont.h>
#include <AppKit/NSView.h>

#pragma clang assume_nonnull begin

// The values of NSTextAlignment are iOS's where the processor is not Intel's.
typedef DECLARE_ENUM(NSInteger, NSTextAlignment){
#if defined(__x86_64__)
    NSTextAlignmentRight = 1,
    NSTextAlignmentCenter = 2,
#else
    NSTextAlignmentCenter = 1,
    NSTextAlignmentRight = 2,
#endif
    NSTextAlignmentNatural = 4,
};

typedef DECLARE_ENUM(NSUInteger, NSLineBreakMode){
    NSLineBreakByTruncatingTail = 4,
};

@interface NSParagraphStyle : NSObject <NSCopying>
@end

@interface NSMutableParagraphStyle : NSParagraphStyle
@property NSTextAlignment alignment;
@end

DECLARE_EXTERN NSAttributedStringKey const NSFontAttributeName;
DECLARE_EXTERN NSAttributedStringKey const NSParagraphStyleAttributeName;
DECLARE_EXTERN NSAttributedStringKey const NSForegroundColorAttributeName;

@interface NSText : NSView
@property(copy) NSString* string;
@end

@interface NSTextView : NSText
@end

#pragma clang assume_nonnull end
