#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <set>
#include <thread>
#include <vector>

#include "base/MainLoop.h"
#include "platform/linux/input/HeldKeys.h"
#include "platform/linux/input/KeyGrabs.h"
#include "platform/linux/input/XcbHandle.h"
#include "platform/linux/input/Xkb.h"

namespace morla::linux {

/// Hands wanted keys to the main thread before any application sees them, and swallows or passes them as it says. From
/// the first swallowed key until the last swallowed one is released it sees the whole keyboard, and nothing is lost,
/// doubled or put in another order for the application that has the focus.
///
/// How that works on X: a press of a wanted key freezes the keyboard and comes to us alone. Swallowing lets it go on,
/// passing replays it to the focused window. While swallowed keys are down the keyboard is ours; a replay would give it
/// up, so a second connection takes it over while a grab of the pointer keeps the queue of keys frozen. (A connection
/// cannot take it over from itself: its own replay drops the lock, and on one that is not its own a frozen grab is
/// refused.) The server undoes all of it when this program ends, however it ends.
///
/// While another client has the whole keyboard for itself, or a program before us has the key, nothing is seen. While
/// another has the pointer (an open menu, something dragged) there is no such lock: chord keys typed quicker than they
/// are answered may reach the application then.
class KeyboardHook {
 public:
  /// Asked on the main thread, on a turn of the loop for each event.
  class Decider {
   public:
    virtual ~Decider() = default;
    virtual platform::TapDecision decide(platform::KeyEvent const& event) = 0;
    /// No decision came in time: the event has been passed, every key given back.
    virtual void decisionWasLate() = 0;
    /// The keyboard means something else; this many wanted keys belong to other programs there.
    virtual void keymapDidChange(std::size_t refusedKeys) = 0;
    virtual void connectionWasLost() = 0;
  };

  /// Main thread. None when the server takes no further connections, has no XKB or no XInput 2.2. `loop` and `decider`
  /// outlive it.
  [[nodiscard]] static std::unique_ptr<KeyboardHook> open(MainLoop& loop, Decider& decider);
  ~KeyboardHook();
  KeyboardHook(KeyboardHook const&) = delete;
  KeyboardHook& operator=(KeyboardHook const&) = delete;

  /// Main thread. False when another client has one of the keys; what was wanted before stays then.
  [[nodiscard]] bool setWanted(std::vector<platform::WantedKeys> wanted);

 private:
  struct Link;
  struct Question;
  using Connections = std::array<XcbConnection, 2>;

  KeyboardHook(MainLoop& loop, Decider& decider, Connections connections, HeldKeys held, Xkb xkb,
               std::shared_ptr<Keymap const> keymap, std::uint16_t state);

  // On the hook's own thread from here on.
  void run();
  void wait();
  [[nodiscard]] XcbOwned<xcb_generic_event_t> nextEvent(std::size_t& connection);
  void handle(xcb_generic_event_t const& event, std::size_t connection);
  void handleKey(xcb_key_press_event_t const& event, std::size_t connection);
  [[nodiscard]] bool isRepeat(xcb_key_press_event_t const& press) const;
  void reloadKeymap();
  [[nodiscard]] std::shared_ptr<Question> ask(platform::KeyEvent const& event);
  /// Nothing when no decision came in time.
  [[nodiscard]] std::optional<platform::TapDecision> waitForAnswer(Question& question) const;
  void tell(void (*what)(Decider&));
  void tellFlags();
  void swallow();
  void pass();
  void passAndKeepKeyboard();
  /// Freezes the queue of keys, by the connection that the last key did not come on, so that none slips through between
  /// a replay and the next grab. Once it is requested it must be waited for or released.
  void requestPointer();
  /// False when another client has the pointer.
  [[nodiscard]] bool waitForPointer();
  void releasePointer();
  /// Of the swallowed keys those that have come up unseen; gives whether there are any.
  [[nodiscard]] bool forgetReleasedKeys();
  void giveUp();
  void roundTrip(xcb_connection_t* connection);
  [[nodiscard]] xcb_connection_t* owner() const { return connections_[owner_].get(); }
  [[nodiscard]] xcb_connection_t* other() const { return connections_[1 - owner_].get(); }

  MainLoop& loop_;
  std::shared_ptr<Link> link_;
  Connections connections_;  ///< the first has the grabs of single keys
  Xkb xkb_;
  xcb_window_t root_;
  KeyGrabs grabs_;
  int wakeUp_;  ///< an eventfd: something is queued that the sockets do not show, or the end
  std::atomic<bool> isEnding_ = false;

  std::chrono::milliseconds const longestDecision_;

  // The thread's own.
  std::uint16_t state_;
  HeldKeys held_;  ///< on the first connection
  bool isKeymapStale_ = false;
  std::size_t owner_ = 0;                             ///< the connection that the last key came on
  bool hasKeyboard_ = false;                          ///< the whole keyboard, not one key
  std::optional<xcb_grab_pointer_cookie_t> pointer_;  ///< requested, nothing done with the answer yet
  std::set<xcb_keycode_t> swallowed_;                 ///< pressed, swallowed, and still down
  std::set<xcb_keycode_t> down_;                      ///< pressed since the first of these, and still down

  std::thread thread_;
};

}  // namespace morla::linux
