#include "captureone/processing/Processor.h"

#include <utility>

namespace morla::captureone {

Processor::Processor(Model& model, World world) : model_(model), world_(std::move(world)) {
  changes_ = model_.onChange([this] { proceed(); });
}

bool Processor::isReady(OutputJob const& job) const {
  // What was asked for is written also when its document has been closed since.
  auto const* document = model_.documents().find(job.document);
  return document == nullptr || document->processes;
}

void Processor::proceed() {
  // Finishing a file is a change as well, and with it we are here again.
  if (std::exchange(isProceeding_, true)) return;
  while (state_ == State::idle) {
    auto const* job = model_.queue().next([this](OutputJob const& each) { return isReady(each); });
    if (job == nullptr) break;
    begin(*job);
  }
  isProceeding_ = false;
}

void Processor::begin(OutputJob const& job) {
  auto const delay = model_.queue().delay();
  if (delay.count() == 0) {
    write(job.id);
    return;
  }
  state_ = State::waiting;
  world_.after(delay, life_.weak([this, id = job.id] {
    state_ = State::idle;
    // The queue may have been emptied or held up meanwhile.
    auto const* waited = model_.queue().find(id);
    bool const isHeld = model_.queue().stall() == ProcessingQueue::Stall::on;
    if (waited != nullptr && !isHeld && isReady(*waited)) write(id);
    proceed();
  }));
}

void Processor::write(std::string const& id) {
  state_ = State::writing;
  OutputJob const job = *model_.queue().find(id);
  world_.write(job, life_.weak([this, id](std::optional<std::string> failure) {
    state_ = State::idle;
    if (failure) {
      model_.queue().fail(id, *std::move(failure));
    } else {
      model_.queue().finish(id);
    }
    proceed();
  }));
}

}  // namespace morla::captureone
