#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "base/Json.h"

namespace morla {

/// Tells what happens, one JSON object a line, in the order of happening: for tests that wait for an event instead of
/// sleeping, and for people who want to know. Main thread. At most one trace is active; without one, a place that could
/// tell something pays one test for null.
class Trace {
 public:
  using WriteLine = std::function<void(std::string const&)>;
  using Clock = std::function<std::chrono::milliseconds()>;

  /// Active from here to the end of this object. `write` gets each line without its end of line; `sinceStart` gives the
  /// value of every line's "t".
  Trace(WriteLine write, Clock sinceStart);
  ~Trace();
  Trace(Trace const&) = delete;
  Trace& operator=(Trace const&) = delete;

  [[nodiscard]] static Trace* active() { return active_; }

  /// `fields` are written in the order given by the map, after "t".
  void line(std::map<std::string, Json> const& fields);

  void published(std::string_view name, Json const& value);
  void ready();

  /// Numbers the scripts of this trace from 1.
  [[nodiscard]] std::int64_t nextScriptId() { return ++lastScriptId_; }

 private:
  static Trace* active_;
  WriteLine write_;
  Clock sinceStart_;
  std::int64_t lastScriptId_ = 0;
};

}  // namespace morla
