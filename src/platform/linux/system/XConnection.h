#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/Lifetime.h"
#include "base/MainLoop.h"

class QSocketNotifier;

namespace morla::linux {

struct FreeDeleter {
  void operator()(void* memory) const { std::free(memory); }
};
/// A reply or an event of xcb, which are plain memory.
template <typename T>
using XcbReply = std::unique_ptr<T, FreeDeleter>;

/// The properties and messages that this program reads and sends.
enum class Atom : std::uint8_t {
  netActiveWindow,
  netClientList,
  netClientListStacking,
  netSupportingWmCheck,
  netWmPid,
  wmProtocols,
  wmTakeFocus,
  count,
};

/// A private connection to the X server that the main loop watches. Errors of requests (a window that has vanished)
/// are dropped: with xcb they belong to this connection alone and never end the program. Main thread.
class XConnection {
 public:
  /// Whether there is a display to open; to be asked before a toolkit that would end the program otherwise.
  [[nodiscard]] static bool canOpen();
  /// Nothing when the display named by DISPLAY cannot be opened.
  [[nodiscard]] static std::unique_ptr<XConnection> open(MainLoop& loop);
  ~XConnection();
  XConnection(XConnection const&) = delete;
  XConnection& operator=(XConnection const&) = delete;

  [[nodiscard]] xcb_connection_t* get() const { return connection_.get(); }
  [[nodiscard]] xcb_window_t root() const { return root_; }
  [[nodiscard]] xcb_atom_t atom(Atom which) const { return atoms_[static_cast<std::size_t>(which)]; }

  /// Calls `handler` on a turn of the loop whenever events may have arrived; it takes them with `nextEvent`.
  void onEvents(std::function<void()> handler);

  /// Calls `handler` on the loop when the server has gone, or will hear no more of this connection.
  void onLoss(std::function<void()> handler) { lossHandler_ = std::move(handler); }

  /// The next event that has arrived; null when there is none. Never waits.
  [[nodiscard]] XcbReply<xcb_generic_event_t> nextEvent();

  /// Waits until everything that the server did before has arrived as events, and every request was carried out.
  void roundTrip();

  /// To be called after an answer that was asked for with `get()`: it brings events along that wait in memory, where
  /// the loop does not see them.
  void keepArrivedEvents();

  /// The 32-bit items of a property; empty when it is absent or of another type.
  [[nodiscard]] std::vector<std::uint32_t> items(xcb_window_t window, xcb_atom_t property, xcb_atom_t type);
  [[nodiscard]] std::string bytes(xcb_window_t window, xcb_atom_t property, xcb_atom_t type);

  void selectEvents(xcb_window_t window, std::uint32_t mask);
  /// A client message with 32-bit items to `receiver`, about `window`.
  void sendMessage(xcb_window_t receiver, std::uint32_t eventMask, xcb_window_t window, xcb_atom_t type,
                   std::vector<std::uint32_t> const& data);
  void flush();

 private:
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };

  XConnection(xcb_connection_t* connection, int screen, MainLoop& loop);
  void readAtoms();

  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  MainLoop& loop_;
  xcb_window_t root_ = XCB_WINDOW_NONE;
  std::vector<xcb_atom_t> atoms_;
  std::deque<XcbReply<xcb_generic_event_t>> arrived_;
  bool isCallPosted_ = false;
  std::function<void()> handler_;
  std::function<void()> lossHandler_;
  std::unique_ptr<QSocketNotifier> readable_;
  Lifetime life_;
};

}  // namespace morla::linux
