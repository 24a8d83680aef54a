#include "platform/linux/input/KeyboardHook.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <utility>

#include "base/MainThread.h"
#include "platform/linux/input/KeyCodes.h"

namespace morla::linux {
namespace {

using platform::KeyEventType;
using platform::TapDecision;

/// The keyboard of the whole desktop stands still for as long. A turn of a main loop that is not busy takes a fifth of
/// a millisecond; a person notices a tenth of a second. On a machine so busy that the main thread does not get to run
/// for as long, tests would test the machine: they ask for more time.
std::chrono::milliseconds longestDecision() {
  constexpr std::chrono::milliseconds kUsual(50);
  char const* const asked = std::getenv("MORLA_KEY_DECISION_MS");
  return asked == nullptr ? kUsual : std::max(kUsual, std::chrono::milliseconds(std::atoi(asked)));
}

/// Layout, as it stands in a state.
constexpr std::uint16_t kGroupBits = 3U << 13U;

constexpr unsigned groupOf(std::uint16_t state) {
  return (state & kGroupBits) >> 13U;
}

}  // namespace

/// What the main thread may still hold when the hook has ended. `decider` belongs to the main thread.
struct KeyboardHook::Link {
  Decider* decider;
};

struct KeyboardHook::Question {
  platform::KeyEvent event;
  std::mutex mutex;
  std::condition_variable answered;
  bool isExpired = false;
  std::optional<TapDecision> answer;
};

std::unique_ptr<KeyboardHook> KeyboardHook::open(MainLoop& loop, Decider& decider) {
  assertIsMainThread();
  Connections connections{connectToX(), connectToX()};
  if (connections[0] == nullptr || connections[1] == nullptr) return nullptr;
  auto const xkb = Xkb::start(connections[0].get());
  if (!xkb || !Xkb::start(connections[1].get())) return nullptr;
  auto held = HeldKeys::start(connections[0].get());
  if (!held) return nullptr;
  Xkb::selectNotices(connections[0].get());
  auto keymap = Keymap::load(connections[0].get());
  if (keymap == nullptr) return nullptr;
  auto const state = xkb->state(connections[0].get());
  return std::unique_ptr<KeyboardHook>(
      new KeyboardHook(loop, decider, std::move(connections), std::move(*held), *xkb, std::move(keymap), state));
}

KeyboardHook::KeyboardHook(MainLoop& loop, Decider& decider, Connections connections, HeldKeys held, Xkb xkb,
                           std::shared_ptr<Keymap const> keymap, std::uint16_t state)
    : loop_(loop),
      link_(std::make_shared<Link>(Link{&decider})),
      connections_(std::move(connections)),
      xkb_(xkb),
      root_(rootOf(connections_[0].get())),
      grabs_(connections_[0].get(), std::move(keymap), groupOf(state)),
      wakeUp_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      longestDecision_(longestDecision()),
      state_(state),
      held_(std::move(held)),
      thread_([this] { run(); }) {}

KeyboardHook::~KeyboardHook() {
  assertIsMainThread();
  link_->decider = nullptr;
  isEnding_ = true;
  eventfd_write(wakeUp_, 1);
  thread_.join();
  close(wakeUp_);
}

bool KeyboardHook::setWanted(std::vector<platform::WantedKeys> wanted) {
  assertIsMainThread();
  bool const done = grabs_.setWanted(std::move(wanted));
  // The answers may have brought keys along, which the thread does not find on the socket any more.
  eventfd_write(wakeUp_, 1);
  return done;
}

void KeyboardHook::run() {
  while (!isEnding_) {
    std::size_t connection = 0;
    while (auto const event = nextEvent(connection)) handle(*event, connection);
    for (auto const& each : connections_) {
      if (xcb_connection_has_error(each.get()) == 0) continue;
      tell([](Decider& decider) { decider.connectionWasLost(); });
      return;
    }
    if (isKeymapStale_) {
      reloadKeymap();
    } else {
      wait();
    }
  }
}

void KeyboardHook::wait() {
  std::array<pollfd, 3> sources{{{xcb_get_file_descriptor(connections_[0].get()), POLLIN, 0},
                                 {xcb_get_file_descriptor(connections_[1].get()), POLLIN, 0},
                                 {wakeUp_, POLLIN, 0}}};
  if (poll(sources.data(), sources.size(), -1) < 0 && errno != EINTR) return;
  eventfd_t count = 0;
  if (sources[2].revents != 0) eventfd_read(wakeUp_, &count);
}

XcbOwned<xcb_generic_event_t> KeyboardHook::nextEvent(std::size_t& connection) {
  for (connection = 0; connection < connections_.size(); ++connection) {
    XcbOwned<xcb_generic_event_t> event(xcb_poll_for_event(connections_[connection].get()));
    if (event != nullptr) return event;
  }
  return nullptr;
}

void KeyboardHook::handle(xcb_generic_event_t const& event, std::size_t connection) {
  auto const type = event.response_type & 0x7FU;
  if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) {
    // A key event fills the generic one to the last byte.
    handleKey(reinterpret_cast<xcb_key_press_event_t const&>(event), connection);
    return;
  }
  if (connection != 0) return;
  held_.note(event);
  auto const notice = xkb_.notice(event);
  if (!notice) return;
  isKeymapStale_ = isKeymapStale_ || notice->isNewKeymap;
  if (!notice->state) return;
  auto const before = std::exchange(state_, *notice->state);
  if (groupOf(before) != groupOf(state_)) isKeymapStale_ = true;
  auto const keymap = grabs_.keymap();
  // While the keyboard is ours, modifiers come as keys, in order with the others.
  if (!swallowed_.empty() || keymap->flags(before) == keymap->flags(state_)) return;
  held_.refresh(*keymap);
  tellFlags();
}

void KeyboardHook::tellFlags() {
  auto const flags = grabs_.keymap()->flags(state_);
  loop_.post([link = link_, flags] {
    platform::KeyEvent const changed{KeyEventType::flagsChanged, kNoMacKey, flags, {}, false};
    if (link->decider != nullptr) (void)link->decider->decide(changed);
  });
}

void KeyboardHook::reloadKeymap() {
  isKeymapStale_ = false;
  auto keymap = Keymap::load(connections_[0].get());
  if (keymap == nullptr) return;
  auto const refused = grabs_.setKeymap(std::move(keymap), groupOf(state_));
  loop_.post([link = link_, refused] {
    if (link->decider != nullptr) link->decider->keymapDidChange(refused);
  });
}

void KeyboardHook::handleKey(xcb_key_press_event_t const& event, std::size_t connection) {
  if (isKeymapStale_) reloadKeymap();
  owner_ = connection;
  if (swallowed_.empty()) down_.clear();
  auto const key = event.detail;
  bool const isPress = (event.response_type & 0x7FU) == XCB_KEY_PRESS;
  auto keyEvent = grabs_.keymap()->event(key, event.state, isPress ? KeyEventType::down : KeyEventType::up);
  keyEvent.isAutoRepeat = isPress && isRepeat(event);

  auto const question = ask(keyEvent);
  // Most likely the answer is to pass it then, which takes the lock: the server may set it while the main thread
  // decides.
  if (hasKeyboard_ && !swallowed_.contains(key)) requestPointer();
  auto const decision = waitForAnswer(*question);
  if (!decision) {
    giveUp();
    return;
  }
  bool isSwallowed = *decision == TapDecision::swallow && keyEvent.type != KeyEventType::flagsChanged;
  if (isPress) {
    down_.insert(key);
    if (isSwallowed) swallowed_.insert(key);
  } else {
    down_.erase(key);
    // Who has seen a key go down must see it come up.
    isSwallowed = swallowed_.erase(key) != 0 && isSwallowed;
  }
  if (swallowed_.empty()) held_.add(down_);
  if (isSwallowed) {
    swallow();
  } else {
    pass();
  }
}

bool KeyboardHook::isRepeat(xcb_key_press_event_t const& press) const {
  return swallowed_.empty() ? held_.isRepeat(press) : down_.contains(press.detail);
}

std::shared_ptr<KeyboardHook::Question> KeyboardHook::ask(platform::KeyEvent const& event) {
  auto const question = std::make_shared<Question>();
  question->event = event;
  loop_.post([link = link_, question] {
    {
      std::lock_guard const lock(question->mutex);
      if (question->isExpired) return;
    }
    auto const answer = link->decider == nullptr ? TapDecision::pass : link->decider->decide(question->event);
    std::lock_guard const lock(question->mutex);
    question->answer = answer;
    question->answered.notify_one();
  });
  return question;
}

std::optional<TapDecision> KeyboardHook::waitForAnswer(Question& question) const {
  std::unique_lock lock(question.mutex);
  question.answered.wait_for(lock, longestDecision_, [&] { return question.answer.has_value(); });
  question.isExpired = !question.answer.has_value();
  return question.answer;
}

void KeyboardHook::tell(void (*what)(Decider&)) {
  loop_.post([link = link_, what] {
    if (link->decider != nullptr) what(*link->decider);
  });
}

void KeyboardHook::swallow() {
  releasePointer();
  if (swallowed_.empty()) {
    // To thaw the keyboard first would play what is queued into our own grab.
    xcb_ungrab_keyboard(owner(), XCB_CURRENT_TIME);
    hasKeyboard_ = false;
  } else {
    // The grab of a single key would end with the release of that key.
    if (!std::exchange(hasKeyboard_, true)) {
      auto const cookie =
          xcb_grab_keyboard(owner(), 0, root_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC);
      xcb_discard_reply(owner(), cookie.sequence);
    }
    xcb_allow_events(owner(), XCB_ALLOW_SYNC_KEYBOARD, XCB_CURRENT_TIME);
  }
  xcb_flush(owner());
}

void KeyboardHook::pass() {
  if (!swallowed_.empty()) {
    passAndKeepKeyboard();
    return;
  }
  releasePointer();
  hasKeyboard_ = false;
  xcb_allow_events(owner(), XCB_ALLOW_REPLAY_KEYBOARD, XCB_CURRENT_TIME);
  xcb_flush(owner());
}

void KeyboardHook::passAndKeepKeyboard() {
  requestPointer();
  bool const hasPointer = waitForPointer();
  xcb_allow_events(owner(), XCB_ALLOW_REPLAY_KEYBOARD, XCB_CURRENT_TIME);
  roundTrip(owner());
  // With no lock the keys run. One of them may have come to the grab of a single key: on that connection the keyboard
  // would be taken over with the key in it, unanswered, and each answer from there on be for the key after its own.
  owner_ = hasPointer ? 1 - owner_ : 1;
  auto const cookie = xcb_grab_keyboard(owner(), 0, root_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC);
  // The new grab keeps the keyboard frozen until the last request. The pointer goes before it: the server may serve
  // the other connection between any two requests of this one, and the next key would find the pointer taken by us.
  bool hasMissedKeys = false;
  if (hasPointer) {
    xcb_ungrab_pointer(owner(), XCB_CURRENT_TIME);
  } else {
    hasMissedKeys = forgetReleasedKeys();
  }
  if (swallowed_.empty()) {
    xcb_ungrab_keyboard(owner(), XCB_CURRENT_TIME);
  } else {
    xcb_allow_events(owner(), XCB_ALLOW_SYNC_KEYBOARD, XCB_CURRENT_TIME);
  }
  XcbOwned<xcb_grab_keyboard_reply_t> const keyboard(xcb_grab_keyboard_reply(owner(), cookie, nullptr));
  xcb_flush(owner());
  bool const isGranted = keyboard != nullptr && keyboard->status == XCB_GRAB_STATUS_SUCCESS;
  // Refused: a key waits for us already, or another client was quicker, and what becomes of the keys is its affair.
  if (!isGranted) swallowed_.clear();
  hasKeyboard_ = !swallowed_.empty();
  // To the chords it is as if a modifier had changed.
  if (hasMissedKeys || !isGranted) tellFlags();
}

void KeyboardHook::requestPointer() {
  if (pointer_) return;
  // The pointer stands still as well: a click would be nobody's otherwise.
  pointer_ = xcb_grab_pointer(other(), 0, root_, 0, XCB_GRAB_MODE_SYNC, XCB_GRAB_MODE_SYNC, XCB_NONE, XCB_NONE,
                              XCB_CURRENT_TIME);
  xcb_flush(other());
}

bool KeyboardHook::waitForPointer() {
  auto const cookie = std::exchange(pointer_, std::nullopt);
  XcbOwned<xcb_grab_pointer_reply_t> const reply(xcb_grab_pointer_reply(other(), *cookie, nullptr));
  return reply != nullptr && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void KeyboardHook::releasePointer() {
  if (!pointer_) return;
  xcb_discard_reply(other(), std::exchange(pointer_, std::nullopt)->sequence);
  xcb_ungrab_pointer(other(), XCB_CURRENT_TIME);
  xcb_flush(other());
}

bool KeyboardHook::forgetReleasedKeys() {
  XcbOwned<xcb_query_keymap_reply_t> const reply(xcb_query_keymap_reply(owner(), xcb_query_keymap(owner()), nullptr));
  auto const isUp = [&](xcb_keycode_t key) {
    return reply == nullptr || (reply->keys[key / 8U] & (1U << (key % 8U))) == 0;
  };
  std::erase_if(down_, isUp);
  return std::erase_if(swallowed_, isUp) != 0;
}

void KeyboardHook::giveUp() {
  // Before the keyboard runs again, so that no further key comes here.
  grabs_.releaseAll();
  swallowed_.clear();
  roundTrip(connections_[0].get());
  pass();
  tell([](Decider& decider) { decider.decisionWasLate(); });
}

void KeyboardHook::roundTrip(xcb_connection_t* connection) {
  XcbOwned<xcb_get_input_focus_reply_t> const reply(
      xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

}  // namespace morla::linux
