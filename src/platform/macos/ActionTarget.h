#pragma once

#import <Foundation/Foundation.h>

#include <functional>

NS_ASSUME_NONNULL_BEGIN

/// What a control or a menu item sends its action to. Controls hold their target weakly: somebody else keeps it.
@interface MORLAActionTarget : NSObject
- (instancetype)initWithAction:(std::function<void()>)action NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;
/// The selector to give to the control.
- (void)performAction:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
