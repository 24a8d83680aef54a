#pragma once

#import <AppKit/AppKit.h>

#include <functional>

NS_ASSUME_NONNULL_BEGIN

/// Hears of a text field's edits and of Return. The field holds it weakly: somebody else keeps it.
@interface MORLAFieldDelegate : NSObject <NSTextFieldDelegate>
- (instancetype)initWithEdit:(std::function<void()>)edit submit:(std::function<void()>)submit NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;
@end

NS_ASSUME_NONNULL_END
