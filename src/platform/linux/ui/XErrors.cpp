#include "platform/linux/ui/XErrors.h"

#include <X11/Xlib.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "base/Log.h"
#include "base/MainThread.h"

namespace morla::linux {
namespace {

XErrorHandler previousHandler = nullptr;

/// Written on the main thread only. The handler runs on the thread that reads the answer, and other threads have
/// connections that are none of these.
std::vector<Display*>& guardedDisplays() {
  static std::vector<Display*> displays;
  return displays;
}

bool isExpected(int code) {
  return code == BadWindow || code == BadDrawable || code == BadMatch;
}

int handleError(Display* display, XErrorEvent* error) {
  if (!isMainThread() ||
      std::find(guardedDisplays().begin(), guardedDisplays().end(), display) == guardedDisplays().end()) {
    return previousHandler == nullptr ? 0 : previousHandler(display, error);
  }
  if (isExpected(error->error_code)) return 0;
  std::array<char, 128> text{};
  XGetErrorText(display, error->error_code, text.data(), static_cast<int>(text.size()));
  log("X11", "The X server refused request " + std::to_string(error->request_code) + "." +
                 std::to_string(error->minor_code) + ": " + text.data());
  return 0;
}

}  // namespace

XErrorGuard::XErrorGuard(_XDisplay* display) : display_(display) {
  assertIsMainThread();
  if (guardedDisplays().empty()) previousHandler = XSetErrorHandler(&handleError);
  guardedDisplays().push_back(display);
}

XErrorGuard::~XErrorGuard() {
  auto& displays = guardedDisplays();
  displays.erase(std::find(displays.begin(), displays.end(), display_));
  if (displays.empty()) XSetErrorHandler(previousHandler);
}

}  // namespace morla::linux
