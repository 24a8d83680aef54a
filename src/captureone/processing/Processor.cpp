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
  auto const& queue = model_.queue();
  if (state_ == State::waiting && (queue.find(waitsFor_) == nullptr || queue.delay() != waits_)) endWait();
  while (state_ == State::idle) {
    auto const* job = queue.next([this](OutputJob const& each) { return isReady(each); });
    if (job == nullptr) break;
    begin(*job);
  }
  isProceeding_ = false;
}

void Processor::begin(OutputJob const& job) {
  waits_ = model_.queue().delay();
  if (waits_.count() == 0) {
    write(job.id);
    return;
  }
  state_ = State::waiting;
  waitsFor_ = job.id;
  world_.after(waits_, life_.weak([this, wait = ++wait_] {
    if (wait != wait_ || state_ != State::waiting) return;
    endWait();
    // Held up meanwhile, it waits again later.
    auto const* waited = model_.queue().find(waitsFor_);
    bool const isHeld = model_.queue().stall() == ProcessingQueue::Stall::on;
    if (waited != nullptr && !isHeld && isReady(*waited)) write(waited->id);
    proceed();
  }));
}

void Processor::endWait() {
  state_ = State::idle;
  ++wait_;
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
