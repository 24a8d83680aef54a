#pragma once

#include "platform/linux/ui/XTypes.h"

namespace morla::linux {

/// An X error on `display` never ends the program: windows of others vanish between a question and its answer, which
/// is passed over in silence; everything else is a diagnostic line. Errors on other connections go to whoever handled
/// them before. Main thread; for as long as the connection lives.
class XErrorGuard {
 public:
  explicit XErrorGuard(_XDisplay* display);
  ~XErrorGuard();
  XErrorGuard(XErrorGuard const&) = delete;
  XErrorGuard& operator=(XErrorGuard const&) = delete;

 private:
  _XDisplay* display_;
};

}  // namespace morla::linux
