#pragma once

#import <AppKit/AppKit.h>

#include <functional>

#include "platform/Panel.h"
#include "view/PanelSpec.h"

NS_ASSUME_NONNULL_BEGIN

/// The window of every panel; what the panels' classes decide for themselves, it asks the behaviour.
@interface MORLAPanel : NSPanel <NSWindowDelegate>
/// The panel that this window is; null once that has ended, and then the behaviour is asked no more.
@property(nonatomic, nullable) morla::platform::Panel* owner;
/// The window is about to close, by its button, by Escape or by us.
@property(nonatomic, copy, nullable) void (^onWillClose)(void);
- (instancetype)initWithSpec:(morla::view::PanelSpec const&)spec
                   behaviour:(morla::view::PanelBehaviour&)behaviour NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag NS_UNAVAILABLE;
@end

namespace morla::macos {

/// A window of the native class that is called like the panel, if there is one.
[[nodiscard]] MORLAPanel* makePanelWindow(view::PanelSpec const& spec, view::PanelBehaviour& behaviour);

}  // namespace morla::macos

NS_ASSUME_NONNULL_END
