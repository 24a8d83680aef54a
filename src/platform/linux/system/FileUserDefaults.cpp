#include "platform/linux/system/FileUserDefaults.h"

#include "base/Log.h"
#include "base/MainThread.h"

namespace morla::linux {

FileUserDefaults::FileUserDefaults(std::string path) : file_(std::move(path)) {
  auto read = file_.read();
  values_ = std::move(read.values);
  if (!read.problem.empty()) log("UserDefaults", read.problem);
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
  auto const problem = file_.change(unsaved_, values_);
  if (!problem) {
    unsaved_.clear();
    lastProblem_.clear();
  } else if (*problem != lastProblem_) {
    lastProblem_ = *problem;
    log("UserDefaults", *problem);
  }
}

}  // namespace morla::linux
