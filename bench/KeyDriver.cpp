#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>
// Xlib's macros come last.
#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

/// Types, and says how long it took until somebody knew.
///
///     bench_keys fire COUNT KEYCODE PIPE WORD…
///
/// presses each key COUNT times, in turn, and waits each time until WORD comes out of its PIPE: `fire INDEX
/// NANOSECONDS`.
///
///     bench_keys pass COUNT KEYCODE [HELD]
///
/// opens a window that has the focus and waits for each key in it: `pass NANOSECONDS`. HELD is held down meanwhile, and
/// belongs to another program.
///
///     bench_keys flood COUNT KEYCODE [EVERY KEYCODE]
///
/// types the key COUNT times as quickly as the server takes it, after every EVERY of them the second key, which belongs
/// to another program: `lost NUMBER`, how many presses and releases of the first the window did not get, or got out of
/// order; `through NUMBER`, how many presses of the second it got.
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::milliseconds kLongest(20000);
/// After it a key counts as lost.
constexpr std::chrono::milliseconds kLongestInAFlood(2000);
/// Between two keys: whoever works on the last one, a shell for instance, shall be done.
constexpr std::chrono::milliseconds kPause(10);

long long nanosecondsSince(steady_clock::time_point start) {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(steady_clock::now() - start).count();
}

bool hasInput(int descriptor, std::chrono::milliseconds longest) {
  pollfd source{descriptor, POLLIN, 0};
  return poll(&source, 1, static_cast<int>(longest.count())) > 0;
}

void waitForInput(int descriptor) {
  if (!hasInput(descriptor, kLongest)) throw std::runtime_error("nothing came");
}

class Fingers {
 public:
  void send(unsigned key, bool isPress) {
    XTestFakeKeyEvent(display_, key, isPress ? True : False, CurrentTime);
    XFlush(display_);
  }
  /// Returns when the server has got everything.
  void sync() { XSync(display_, False); }

 private:
  Display* display_ = XOpenDisplay(nullptr);
};

/// A window that has the focus, on a connection of its own.
class Application {
 public:
  Application() {
    if (display_ == nullptr) throw std::runtime_error("the display does not open");
    XkbSetDetectableAutoRepeat(display_, True, nullptr);
    window_ = XCreateSimpleWindow(display_, XDefaultRootWindow(display_), 0, 0, 50, 50, 0, 0, 0);
    XSelectInput(display_, window_, KeyPressMask | KeyReleaseMask | FocusChangeMask);
    XMapWindow(display_, window_);
    // The window manager gives the focus to every new window, and says when it has.
    XSelectInput(display_, XDefaultRootWindow(display_), PropertyChangeMask);
    bool hasFocus = false;
    while (!hasFocus || activeWindow() != window_) {
      auto const type = next().type;
      if (type == FocusIn || type == FocusOut) hasFocus = type == FocusIn;
    }
  }

  /// The next press or release; none when it does not come within that time.
  std::optional<XKeyEvent> nextKey(std::chrono::milliseconds longest = kLongest) {
    while (XPending(display_) > 0 || hasInput(XConnectionNumber(display_), longest)) {
      if (XPending(display_) == 0) continue;
      auto const event = next();
      if (event.type == KeyPress || event.type == KeyRelease) return event.xkey;
    }
    return std::nullopt;
  }

 private:
  XEvent next() {
    while (XPending(display_) == 0) waitForInput(XConnectionNumber(display_));
    XEvent event{};
    XNextEvent(display_, &event);
    return event;
  }

  Window activeWindow() {
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(display_, XDefaultRootWindow(display_), XInternAtom(display_, "_NET_ACTIVE_WINDOW", False), 0, 1,
                       False, XA_WINDOW, &type, &format, &count, &left, &data);
    Window window = None;
    if (data != nullptr && count == 1) std::memcpy(&window, data, sizeof window);
    XFree(data);
    return window;
  }

  Display* display_ = XOpenDisplay(nullptr);
  Window window_ = 0;
};

struct Target {
  unsigned key;
  int pipe;
  std::string_view word;

  /// Returns when the word has come, with whatever came after it in one piece.
  void wait() const {
    std::string text;
    while (text.find(word) == std::string::npos) {
      waitForInput(pipe);
      std::array<char, 4096> piece;
      auto const size = read(pipe, piece.data(), piece.size());
      if (size <= 0) throw std::runtime_error("the pipe has ended");
      text.append(piece.data(), static_cast<std::size_t>(size));
    }
  }
};

void fire(int count, std::vector<Target> const& targets) {
  Fingers fingers;
  for (int i = 0; i < count; ++i) {
    for (std::size_t index = 0; index < targets.size(); ++index) {
      auto const& target = targets[index];
      auto const start = steady_clock::now();
      fingers.send(target.key, true);
      target.wait();
      std::printf("fire %zu %lld\n", index, nanosecondsSince(start));
      fingers.send(target.key, false);
      fingers.sync();
      std::this_thread::sleep_for(kPause);
    }
  }
}

void pass(int count, unsigned key, unsigned held) {
  Application application;
  Fingers fingers;
  if (held != 0) {
    fingers.send(held, true);
    fingers.sync();
    std::this_thread::sleep_for(kPause);
  }
  for (int i = 0; i < count; ++i) {
    auto const start = steady_clock::now();
    fingers.send(key, true);
    auto const event = application.nextKey();
    if (!event || event->keycode != key) throw std::runtime_error("the key did not come");
    std::printf("pass %lld\n", nanosecondsSince(start));
    fingers.send(key, false);
    (void)application.nextKey();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  if (held != 0) fingers.send(held, false);
  fingers.sync();
}

void flood(int count, unsigned key, int every, unsigned other) {
  // So many at a time; the server keeps what nobody has read yet.
  constexpr int kAtATime = 20;
  Application application;
  Fingers fingers;
  int lost = 0;
  int through = 0;
  bool isDown = false;
  for (int sent = 0; sent < count; sent += kAtATime) {
    for (int i = 0; i < kAtATime; ++i) {
      fingers.send(key, true);
      fingers.send(key, false);
      if (every == 0 || (i + 1) % every != 0) continue;
      fingers.send(other, true);
      fingers.send(other, false);
    }
    for (int left = 2 * kAtATime; left > 0; --left) {
      auto const event = application.nextKey(kLongestInAFlood);
      if (!event) {
        lost += left;
        break;
      }
      bool const isPress = event->type == KeyPress;
      if (event->keycode == other) {
        through += isPress ? 1 : 0;
        ++left;
      } else if (isPress == std::exchange(isDown, isPress)) {
        ++lost;
      }
    }
  }
  std::printf("lost %d\nthrough %d\n", lost, through);
}

unsigned number(char const* text) {
  return static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

int run(std::vector<char const*> const& arguments) {
  constexpr int kUsage = 2;
  if (arguments.size() < 3) return kUsage;
  std::string_view const what = arguments[0];
  auto const count = static_cast<int>(number(arguments[1]));
  auto const argument = [&](std::size_t i) { return i < arguments.size() ? number(arguments[i]) : 0; };
  if (what == "fire") {
    std::vector<Target> targets;
    for (std::size_t i = 2; i + 2 < arguments.size(); i += 3) {
      // Also for writing: who writes there may come and go.
      targets.push_back({number(arguments[i]), open(arguments[i + 1], O_RDWR | O_CLOEXEC), arguments[i + 2]});
    }
    fire(count, targets);
  } else if (what == "pass") {
    pass(count, argument(2), argument(3));
  } else if (what == "flood") {
    flood(count, argument(2), static_cast<int>(argument(3)), argument(4));
  } else {
    return kUsage;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    int const status = run({argv + 1, argv + argc});
    if (status != 0) std::fputs("usage: bench_keys fire|pass|flood COUNT KEYCODE…\n", stderr);
    return status;
  } catch (std::exception const& error) {
    std::fprintf(stderr, "bench_keys: %s\n", error.what());
    return 1;
  }
}
