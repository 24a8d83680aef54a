#include "captureone/model/ProcessingQueue.h"

#include <algorithm>
#include <utility>

namespace morla::captureone {

std::string outputFolder(Document const& document, Recipe const& recipe, Image const& image) {
  std::string folder;
  switch (recipe.rootFolder) {
    case RootFolder::outputLocation:
      folder = document.output;
      break;
    case RootFolder::imageFolder:
      folder = image.path.substr(0, std::max<std::size_t>(image.path.rfind('/'), 1));
      break;
    case RootFolder::customLocation:
      folder = recipe.rootLocation.empty() ? document.output : recipe.rootLocation;
      break;
  }
  return recipe.subFolder.empty() ? folder : folder + "/" + recipe.subFolder;
}

OutputJob const* ProcessingQueue::find(std::string_view id) const {
  auto const found = std::ranges::find(jobs_, id, &OutputJob::id);
  return found == jobs_.end() ? nullptr : &*found;
}

void ProcessingQueue::add(std::vector<OutputJob> jobs) {
  if (jobs.empty()) return;
  if (jobs_.empty()) done_ = 0;
  for (auto& job : jobs) {
    job.id = "job-" + std::to_string(++made_);
    jobs_.push_back(std::move(job));
  }
  changes_.announce();
}

OutputJob const* ProcessingQueue::next(std::function<bool(OutputJob const&)> const& isReady) const {
  if (stall_ == Stall::on) return nullptr;
  auto const found = std::ranges::find_if(jobs_, isReady);
  return found == jobs_.end() ? nullptr : &*found;
}

void ProcessingQueue::finish(std::string_view id) {
  // The first one, as a rule: looking on behind it would make 5,000 files take long.
  auto const found = std::ranges::find(jobs_, id, &OutputJob::id);
  if (found == jobs_.end()) return;
  jobs_.erase(found);
  ++done_;
  changes_.announce();
}

void ProcessingQueue::fail(std::string_view id, std::string reason) {
  auto const found = std::ranges::find(jobs_, id, &OutputJob::id);
  if (found == jobs_.end()) return;
  failures_.push_back({std::move(*found), std::move(reason)});
  if (failures_.size() > kRememberedFailures) failures_.pop_front();
  jobs_.erase(found);
  ++done_;
  changes_.announce();
}

bool ProcessingQueue::setDelay(Seconds delay) {
  if (!(delay.count() >= 0 && delay <= kLongestDelay)) return false;
  if (std::exchange(delay_, delay) != delay) changes_.announce();
  return true;
}

void ProcessingQueue::setStall(Stall stall) {
  if (std::exchange(stall_, stall) != stall) changes_.announce();
}

void ProcessingQueue::reset() {
  jobs_.clear();
  failures_.clear();
  done_ = 0;
  delay_ = Seconds(0);
  stall_ = Stall::off;
  changes_.announce();
}

}  // namespace morla::captureone
