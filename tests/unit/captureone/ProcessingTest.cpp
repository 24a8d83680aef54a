#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "captureone/processing/Processor.h"

namespace morla::captureone {
namespace {

/// Time and disk as the test wants them.
class ProcessorTest : public ::testing::Test {
 protected:
  void queue(std::size_t count, std::string const& documentId = {}) {
    std::vector<OutputJob> jobs(count);
    for (auto& each : jobs) each.document = documentId.empty() ? model_.documents().current()->id : documentId;
    model_.queue().add(std::move(jobs));
  }
  void passTime() {
    auto due = std::exchange(timers_, {});
    for (auto const& each : due) each();
  }
  void finish(std::optional<std::string> failure = {}) {
    auto written = std::move(open_.front());
    open_.pop_front();
    written(std::move(failure));
  }
  std::size_t left() { return model_.queue().length(); }

  Model model_;
  std::vector<std::function<void()>> timers_;
  std::vector<double> delays_;
  std::deque<Processor::Written> open_;
  bool isInstant_ = false;
  std::size_t begun_ = 0;
  std::optional<Processor> processor_{std::in_place, model_,
                                      Processor::World{[this](auto delay, auto then) {
                                                         delays_.push_back(delay.count());
                                                         timers_.push_back(std::move(then));
                                                       },
                                                       [this](auto const&, auto written) {
                                                         ++begun_;
                                                         if (isInstant_) {
                                                           written({});
                                                         } else {
                                                           open_.push_back(std::move(written));
                                                         }
                                                       }}};
};

TEST_F(ProcessorTest, WritesOneFileAfterTheOtherWithoutWaiting) {
  queue(3);
  EXPECT_EQ(begun_, 1u);
  finish();
  EXPECT_EQ(begun_, 2u);
  EXPECT_EQ(left(), 2u) << "the one that is being written counts";
  finish();
  finish();
  EXPECT_EQ(left(), 0u);
  EXPECT_TRUE(timers_.empty());
}

TEST_F(ProcessorTest, AWriterThatAnswersAtOnceNeedsNoDeepStack) {
  isInstant_ = true;
  queue(20000);
  EXPECT_EQ(left(), 0u);
  EXPECT_EQ(begun_, 20000u);
}

TEST_F(ProcessorTest, WaitsBeforeEachFile) {
  model_.queue().setDelay(std::chrono::duration<double>(1.5));
  queue(2);
  EXPECT_EQ(begun_, 0u);
  passTime();
  EXPECT_EQ(begun_, 1u);
  finish();
  EXPECT_EQ(begun_, 1u);
  passTime();
  EXPECT_EQ(begun_, 2u);
  EXPECT_EQ(delays_, (std::vector{1.5, 1.5}));
}

TEST_F(ProcessorTest, AFileThatFailedIsRememberedAndTheNextOneBegins) {
  queue(2);
  finish("No space left on device");
  EXPECT_EQ(begun_, 2u);
  finish();
  EXPECT_EQ(left(), 0u);
  ASSERT_EQ(model_.queue().failures().size(), 1u);
  EXPECT_EQ(model_.queue().failures()[0].reason, "No space left on device");
}

TEST_F(ProcessorTest, AStallLetsTheFileBeFinishedAndBeginsNoOther) {
  queue(2);
  model_.queue().setStall(ProcessingQueue::Stall::on);
  finish();
  EXPECT_EQ(left(), 1u);
  EXPECT_EQ(begun_, 1u);
  model_.queue().setStall(ProcessingQueue::Stall::off);
  EXPECT_EQ(begun_, 2u);
}

TEST_F(ProcessorTest, AStallDuringTheWaitHoldsTheFileBack) {
  model_.queue().setDelay(std::chrono::duration<double>(1));
  queue(1);
  model_.queue().setStall(ProcessingQueue::Stall::on);
  passTime();
  EXPECT_EQ(begun_, 0u);
  model_.queue().setStall(ProcessingQueue::Stall::off);
  EXPECT_EQ(begun_, 0u) << "and waits again";
  passTime();
  EXPECT_EQ(begun_, 1u);
}

TEST_F(ProcessorTest, AnEmptiedQueueEndsAWaitAndAFileThatIsBeingWritten) {
  model_.queue().setDelay(std::chrono::duration<double>(1));
  queue(1);
  model_.reset();
  passTime();
  EXPECT_EQ(begun_, 0u);
  queue(1);
  EXPECT_EQ(begun_, 1u);
  model_.reset();
  queue(1);
  EXPECT_EQ(begun_, 1u) << "one at a time";
  finish();
  EXPECT_EQ(begun_, 2u);
  EXPECT_EQ(left(), 1u);
}

TEST_F(ProcessorTest, AWaitForAFileThatIsNotWantedAnyMoreHoldsNoOtherUp) {
  model_.queue().setDelay(std::chrono::duration<double>(3600));
  queue(1);
  model_.reset();
  queue(1);
  EXPECT_EQ(begun_, 1u);
  passTime();
  EXPECT_EQ(begun_, 1u) << "the timer of the wait that was given up";
}

TEST_F(ProcessorTest, AnotherDelayCountsForTheFileThatWaits) {
  model_.queue().setDelay(std::chrono::duration<double>(3600));
  queue(2);
  model_.queue().setDelay(std::chrono::duration<double>(1));
  EXPECT_EQ(delays_, (std::vector{3600.0, 1.0}));
  passTime();
  EXPECT_EQ(begun_, 1u) << "both timers came, one of them too late";
  model_.queue().setDelay(std::chrono::duration<double>(0));
  finish();
  EXPECT_EQ(begun_, 2u);
}

TEST_F(ProcessorTest, ADocumentWhoseQueueIsOffWaitsWhileOthersGoOn) {
  auto const first = model_.documents().current()->id;
  model_.documents().setCount(2);
  auto const setQueue = [&](bool isOn) {
    model_.documents().change(first, [isOn](Document& document) {
      document.processes = isOn;
      return true;
    });
  };
  setQueue(false);
  queue(1, first);
  queue(1);
  EXPECT_EQ(begun_, 1u);
  finish();
  EXPECT_EQ(left(), 1u);
  setQueue(true);
  EXPECT_EQ(begun_, 2u);
}

TEST_F(ProcessorTest, FilesOfAClosedDocumentAreWritten) {
  model_.queue().setStall(ProcessingQueue::Stall::on);
  queue(1);
  model_.documents().setCount(0);
  model_.queue().setStall(ProcessingQueue::Stall::off);
  EXPECT_EQ(begun_, 1u);
}

TEST_F(ProcessorTest, NothingReachesAProcessorThatHasEnded) {
  queue(1);
  model_.queue().setDelay(std::chrono::duration<double>(1));
  queue(1);
  processor_.reset();
  finish();
  passTime();
  EXPECT_EQ(left(), 2u);
}

}  // namespace
}  // namespace morla::captureone
