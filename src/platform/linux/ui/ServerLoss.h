#pragma once

#include <functional>

namespace morla::linux {

/// Calls `leave` when the connection to the X server is lost, instead of whatever the toolkit or Xlib would print and
/// do then; `leave` ends the program and does not return. Main thread, once, after the QApplication was made.
void onServerLoss(std::function<void()> leave);

}  // namespace morla::linux
