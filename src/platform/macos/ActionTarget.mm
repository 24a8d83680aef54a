#include "platform/macos/ActionTarget.h"

#include <utility>

@implementation MORLAActionTarget {
  std::function<void()> _action;
}

- (instancetype)initWithAction:(std::function<void()>)action {
  self = [super init];
  if (self != nil) _action = std::move(action);
  return self;
}

- (void)performAction:(nullable id)sender {
  // A copy, because the action may be the end of this object.
  auto const action = _action;
  if (action) action();
}

@end
