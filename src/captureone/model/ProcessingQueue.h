#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "captureone/model/Changes.h"
#include "captureone/model/Documents.h"

namespace morla::captureone {

/// One file that is to be written, with all that was true of it when it was asked for.
struct OutputJob {
  std::string id;     ///< never given twice in one run
  std::string batch;  ///< of all files that were asked for at once
  std::string document;
  std::string variant;
  Image image;
  Recipe recipe;
  std::string folder;  ///< POSIX path; it may have to be made
};

/// Where `recipe` puts a file made of `image`.
[[nodiscard]] std::string outputFolder(Document const& document, Recipe const& recipe, Image const& image);

/// The files that are to be written, one after the other. It is only a list: somebody else takes from it, waits
/// `delay()` and writes.
class ProcessingQueue {
 public:
  using Seconds = std::chrono::duration<double>;
  enum class Stall { off, on };

  /// A bound, so that a clock can be set to it.
  static constexpr Seconds kLongestDelay{86'400};
  static constexpr std::size_t kRememberedFailures = 100;

  struct Failure {
    OutputJob job;
    std::string reason;
  };

  explicit ProcessingQueue(Changes& changes) : changes_(changes) {}

  /// Files that have not been finished, the one that is being written among them.
  [[nodiscard]] std::size_t length() const { return jobs_.size(); }
  [[nodiscard]] std::deque<OutputJob> const& jobs() const { return jobs_; }
  /// Files that have come to their end, written or not, since there last was nothing to do.
  [[nodiscard]] std::size_t done() const { return done_; }
  [[nodiscard]] OutputJob const* find(std::string_view id) const;
  /// The last ones, the oldest first.
  [[nodiscard]] std::deque<Failure> const& failures() const { return failures_; }
  /// Per file.
  [[nodiscard]] Seconds delay() const { return delay_; }
  [[nodiscard]] Stall stall() const { return stall_; }

  /// Gives each job its id. Nothing happens without any.
  void add(std::vector<OutputJob> jobs);
  /// Files of documents for which this is false wait. Null: there is nothing to be done now.
  [[nodiscard]] OutputJob const* next(std::function<bool(OutputJob const&)> const& isReady) const;
  /// The file is written. Nothing happens when it is not in the list any more.
  void finish(std::string_view id);
  /// The file cannot be written.
  void fail(std::string_view id, std::string reason);

  /// From 0 to `kLongestDelay`; anything else is false and changes nothing.
  bool setDelay(Seconds delay);
  /// While it is on, no further file is begun.
  void setStall(Stall stall);
  void reset();

 private:
  Changes& changes_;
  std::deque<OutputJob> jobs_;
  std::deque<Failure> failures_;
  std::size_t made_ = 0;
  std::size_t done_ = 0;
  Seconds delay_{0};
  Stall stall_ = Stall::off;
};

}  // namespace morla::captureone
