#pragma once

#include <AppKit/NSView.h>

#pragma clang assume_nonnull begin

typedef DECLARE_ENUM(NSInteger, NSUserInterfaceLayoutOrientation){
    NSUserInterfaceLayoutOrientationHorizontal = 0,
    NSUserInterfaceLayoutOrientationVertical = 1,
};

typedef DECLARE_ENUM(NSInteger, NSStackViewDistribution){
    NSStackViewDistributionFill = 0,
};

@interface NSStackView : NSView
@property NSUserInterfaceLayoutOrientation orientation;
@property NSLayoutAttribute alignment;
@property NSStackViewDistribution distribution;
@property CGFloat spacing;
@property(readonly, copy) NSArray<__kindof NSView*>* arrangedSubviews;
- (void)insertArrangedSubview:(NSView*)view atIndex:(NSInteger)index;
- (void)setHuggingPriority:(NSLayoutPriority)huggingPriority forOrientation:(NSLayoutConstraintOrientation)orientation;
@end

#pragma clang assume_nonnull end
