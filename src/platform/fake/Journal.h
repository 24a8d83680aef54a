#pragma once

#include <string>
#include <vector>

namespace morla::fake {

/// What the fakes were asked for, in order, so that a test can state a whole sequence.
class Journal {
 public:
  void add(std::string entry) { entries_.push_back(std::move(entry)); }
  [[nodiscard]] std::vector<std::string> const& entries() const { return entries_; }
  void clear() { entries_.clear(); }

 private:
  std::vector<std::string> entries_;
};

/// Ends the test program with a line on standard error: a fake was asked for what its test did not set up.
[[noreturn]] void failLoudly(std::string const& message);

}  // namespace morla::fake
