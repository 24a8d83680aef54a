#include <X11/Xlib.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

/// The least that a program can do to be told of a key wherever it is typed: it takes the key for itself, and writes a
/// byte for each press. No layout, no modifiers, nothing that could be swallowed or passed.
///
///     bench_bare_chord KEYCODE
///
/// writes `x` for each press, and stays until it is ended.
int main(int argc, char** argv) {
  Display* const display = XOpenDisplay(nullptr);
  if (argc != 2 || display == nullptr) {
    std::fputs("usage: bench_bare_chord KEYCODE\n", stderr);
    return 2;
  }
  XGrabKey(display, std::atoi(argv[1]), 0, XDefaultRootWindow(display), False, GrabModeAsync, GrabModeAsync);
  while (true) {
    XEvent event{};
    XNextEvent(display, &event);
    if (event.type == KeyPress && write(STDOUT_FILENO, "x", 1) != 1) return 1;
  }
}
