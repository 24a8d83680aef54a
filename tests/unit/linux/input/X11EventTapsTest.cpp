#include "platform/linux/input/X11EventTaps.h"

#include <gmock/gmock.h>
#include <poll.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

#include "unit/linux/input/PrivateServer.h"
// Xlib's macros come last.
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

namespace morla::linux {
namespace {

using platform::TapDecision;
using std::chrono::seconds;

constexpr unsigned kA = 38;
constexpr unsigned kX = 53;
constexpr auto kLongest = seconds(20);

/// A main loop that turns only when the test says so.
class ManualLoop : public MainLoop {
 public:
  void post(std::function<void()> work) override {
    std::lock_guard const lock(mutex_);
    posted_.push_back(std::move(work));
    news_.notify_one();
  }
  Subscription after(Duration, std::function<void()>) override { return {}; }
  Subscription every(Duration, std::function<void()>) override { return {}; }
  [[nodiscard]] TimePoint now() const override { return {}; }

  /// Turns until `isTrue`; false when that takes too long.
  bool runUntil(std::function<bool()> const& isTrue) {
    while (!isTrue()) {
      std::unique_lock lock(mutex_);
      if (!news_.wait_for(lock, kLongest, [&] { return !posted_.empty(); })) return false;
      auto const work = std::move(posted_.front());
      posted_.pop_front();
      lock.unlock();
      work();
    }
    return true;
  }

 private:
  std::mutex mutex_;
  std::condition_variable news_;
  std::deque<std::function<void()>> posted_;
};

/// Swallows the key A.
class Swallower : public platform::EventTap::Callback {
 public:
  TapDecision handle(platform::KeyEvent const& event) override {
    events.push_back(event);
    return event.charactersIgnoringModifiers == "a" ? TapDecision::swallow : TapDecision::pass;
  }
  void tapWasDisabled(platform::EventTap& tap) override {
    ++timesDisabled;
    tap.enable();
  }

  std::vector<platform::KeyEvent> events;
  int timesDisabled = 0;
};

/// Another program, which has the focus.
class Client {
 public:
  Client() {
    window_ = XCreateSimpleWindow(display_, XDefaultRootWindow(display_), 0, 0, 100, 100, 0, 0, 0);
    XSelectInput(display_, window_, KeyPressMask | KeyReleaseMask | StructureNotifyMask);
    XMapWindow(display_, window_);
    XEvent event{};
    do XNextEvent(display_, &event);
    while (event.type != MapNotify);
    XSetInputFocus(display_, window_, RevertToParent, CurrentTime);
    XSync(display_, False);
  }
  ~Client() { XCloseDisplay(display_); }
  Client(Client const&) = delete;
  Client& operator=(Client const&) = delete;

  void send(unsigned key, bool isPress) {
    XTestFakeKeyEvent(display_, key, isPress ? True : False, CurrentTime);
    XSync(display_, False);
  }
  void type(unsigned key) {
    send(key, true);
    send(key, false);
  }
  /// The next key event that this program gets: positive for a press. 0 when none comes.
  int next() {
    while (true) {
      if (XPending(display_) == 0) {
        pollfd source{XConnectionNumber(display_), POLLIN, 0};
        if (poll(&source, 1, static_cast<int>(std::chrono::milliseconds(kLongest).count())) <= 0) return 0;
        continue;
      }
      XEvent event{};
      XNextEvent(display_, &event);
      if (event.type == KeyPress) return static_cast<int>(event.xkey.keycode);
      if (event.type == KeyRelease) return -static_cast<int>(event.xkey.keycode);
    }
  }

 private:
  Display* display_ = XOpenDisplay(nullptr);
  Window window_ = 0;
};

class X11EventTapsTest : public testing::Test {
 protected:
  std::unique_ptr<platform::EventTap> makeTap() { return taps_.makeTap(callback_, {{"A"}, {}}); }

  PrivateServer server_;
  ManualLoop loop_;
  bool isPermitted_ = true;
  Swallower callback_;
  X11EventTaps taps_{loop_, [this] { return isPermitted_; }};
};

TEST_F(X11EventTapsTest, WithoutThePermissionThereIsNoTap) {
  isPermitted_ = false;
  EXPECT_EQ(makeTap(), nullptr);
  isPermitted_ = true;
  EXPECT_NE(makeTap(), nullptr);
}

TEST_F(X11EventTapsTest, ADecisionThatDoesNotComePassesTheKeyAndDisablesTheTap) {
  Client client;
  auto const tap = makeTap();
  ASSERT_NE(tap, nullptr);
  // Nobody turns the loop: the main thread is stuck.
  client.type(kA);
  EXPECT_EQ(client.next(), static_cast<int>(kA));
  EXPECT_EQ(client.next(), -static_cast<int>(kA));
  client.type(kX);
  EXPECT_EQ(client.next(), static_cast<int>(kX)) << "the keyboard belongs to everybody again";
  EXPECT_EQ(client.next(), -static_cast<int>(kX));

  ASSERT_TRUE(loop_.runUntil([&] { return callback_.timesDisabled == 1; }));
  for (auto const& event : callback_.events) {
    EXPECT_EQ(event.type, platform::KeyEventType::flagsChanged) << "a key that has passed is not decided any more";
  }
}

TEST_F(X11EventTapsTest, ATapThatIsEnabledAgainSwallowsAgain) {
  support::EnvironmentVariable const patience("MORLA_KEY_DECISION_MS", "20000");
  Client client;
  auto const tap = makeTap();
  ASSERT_NE(tap, nullptr);
  static_cast<platform::EventTap::Callback&>(callback_).tapWasDisabled(*tap);
  client.type(kA);
  ASSERT_TRUE(loop_.runUntil([&] { return callback_.events.size() >= 2; }));
  client.type(kX);
  EXPECT_EQ(client.next(), static_cast<int>(kX)) << "the first key that the program gets";
}

TEST_F(X11EventTapsTest, WithoutItsTapAKeyIsFree) {
  Client client;
  auto tap = makeTap();
  ASSERT_NE(tap, nullptr);
  tap.reset();
  client.type(kA);
  EXPECT_EQ(client.next(), static_cast<int>(kA));
}

}  // namespace
}  // namespace morla::linux
