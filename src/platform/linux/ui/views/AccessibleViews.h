#pragma once

namespace morla::linux {

/// Tells the toolkit what our widgets are to screen readers; once is enough. Main thread, with a QApplication.
void makeViewsAccessible();

}  // namespace morla::linux
