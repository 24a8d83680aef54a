#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

#include "platform/linux/input/Keymap.h"

namespace morla::linux {

/// The keys whose presses the server hands to this program alone, on one connection. Any thread.
class KeyGrabs {
 public:
  KeyGrabs(xcb_connection_t* connection, std::shared_ptr<Keymap const> keymap, unsigned group);

  /// From now on these and no others. False when another client has one of them for itself; nothing changes then.
  [[nodiscard]] bool setWanted(std::vector<platform::WantedKeys> wanted);

  /// The same wishes on another keymap or in another layout. Gives how many keys are not to be had there.
  std::size_t setKeymap(std::shared_ptr<Keymap const> keymap, unsigned group);

  /// Gives every key back, without waiting for the server.
  void releaseAll();

  [[nodiscard]] std::shared_ptr<Keymap const> keymap() const;

 private:
  using Set = std::set<Keymap::Grab>;
  [[nodiscard]] Set resolve(std::vector<platform::WantedKeys> const& wanted) const;
  /// Gives those that another client has.
  Set grab(Set const& grabs);
  void ungrab(Set const& grabs);

  xcb_connection_t* connection_;
  xcb_window_t root_;
  mutable std::mutex mutex_;  // guards what follows, and is held while the server is asked
  std::shared_ptr<Keymap const> keymap_;
  unsigned group_;
  std::vector<platform::WantedKeys> wanted_;
  Set held_;
};

}  // namespace morla::linux
