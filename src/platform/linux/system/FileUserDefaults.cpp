#include "platform/linux/system/FileUserDefaults.h"

#include <algorithm>

#include "base/Log.h"
#include "base/MainThread.h"

namespace morla::linux {
namespace {

constexpr Duration kFirstRetry = std::chrono::milliseconds(10);
/// Whoever still holds the lock when the retries have become this rare has been stopped: then it is told.
constexpr Duration kLongestRetry = std::chrono::seconds(1);

}  // namespace

FileUserDefaults::FileUserDefaults(MainLoop& loop, std::string path) : loop_(loop), file_(std::move(path)) {
  auto read = file_.read();
  values_ = std::move(read.values);
  if (!read.problem.empty()) tell(read.problem);
}

std::optional<platform::DefaultsValue> FileUserDefaults::value(std::string_view key) const {
  assertIsMainThread();
  auto const found = values_.find(key);
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

void FileUserDefaults::store(std::vector<platform::DefaultsEntry> const& entries) {
  for (auto const& [key, value] : entries) {
    values_.insert_or_assign(key, value);
    unsaved_.insert_or_assign(key, value);
  }
  save();
}

void FileUserDefaults::save() {
  auto const change = file_.change(unsaved_, std::chrono::milliseconds(0), values_);
  if (change.outcome == DefaultsFile::Outcome::busy) {
    if (retryDelay_ >= kLongestRetry) tell(change.problem + "; what was changed is written when it is free");
    saveLater();
    return;
  }
  retry_.end();
  retryDelay_ = {};
  if (change.outcome == DefaultsFile::Outcome::failed) {
    tell(change.problem);
    return;
  }
  unsaved_.clear();
  lastProblem_.clear();
}

void FileUserDefaults::saveLater() {
  if (retry_.isActive()) return;
  retryDelay_ = std::clamp(2 * retryDelay_, kFirstRetry, kLongestRetry);
  retry_ = loop_.after(retryDelay_, life_.weak([this] {
    retry_.end();
    save();
  }));
}

void FileUserDefaults::finish(std::chrono::milliseconds patience) {
  assertIsMainThread();
  if (unsaved_.empty()) return;
  auto const change = file_.change(unsaved_, patience, values_);
  switch (change.outcome) {
    case DefaultsFile::Outcome::written:
      unsaved_.clear();
      break;
    case DefaultsFile::Outcome::busy:
      log("UserDefaults", change.problem + "; what was changed last is lost");
      break;
    case DefaultsFile::Outcome::failed:
      tell(change.problem);
      break;
  }
}

void FileUserDefaults::tell(std::string const& problem) {
  if (problem == lastProblem_) return;
  lastProblem_ = problem;
  log("UserDefaults", problem);
}

}  // namespace morla::linux
