#include "platform/macos/nodes/FieldDelegate.h"

#include <utility>

@implementation MORLAFieldDelegate {
  std::function<void()> _edit;
  std::function<void()> _submit;
}

- (instancetype)initWithEdit:(std::function<void()>)edit submit:(std::function<void()>)submit {
  self = [super init];
  if (self == nil) return nil;
  _edit = std::move(edit);
  _submit = std::move(submit);
  return self;
}

// Copies, because what is called may be the end of this object.
- (void)controlTextDidChange:(NSNotification*)obj {
  auto const edit = _edit;
  edit();
}

- (BOOL)control:(NSControl*)control textView:(NSTextView*)textView doCommandBySelector:(SEL)commandSelector {
  if (commandSelector != @selector(insertNewline:)) return NO;
  auto const submit = _submit;
  submit();
  return YES;
}

@end
