#include "platform/linux/system/ThreadedBackgroundWork.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "base/Log.h"

namespace morla::linux {
namespace {

/// Nice values go from -20 to 19; ten leaves the thread about a tenth of the processor against a normal one.
constexpr int kUtilityNiceness = 10;

void takePriorityOf(QualityOfService quality) {
  if (quality != QualityOfService::utility) return;
  // On Linux a nice value belongs to the thread. A refusal costs nothing but the lower priority.
  (void)setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), kUtilityNiceness);
}

}  // namespace

/// The threads of one quality of service. Shared with its threads, so that the last steps of a thread that is ending
/// never touch what the owner has destroyed.
class ThreadedBackgroundWork::Pool : public std::enable_shared_from_this<Pool> {
 public:
  Pool(QualityOfService quality, std::chrono::milliseconds idleTime) : quality_(quality), idleTime_(idleTime) {}

  void run(std::function<void()> work) {
    std::unique_lock lock(mutex_);
    jobs_.push_back(std::move(work));
    // Idle threads that were woken but have not taken their job yet still count as idle: hence the comparison.
    if (jobs_.size() <= idle_) {
      wake_.notify_one();
      return;
    }
    ++threads_;
    lock.unlock();
    if (startThread()) return;
    lock.lock();
    --threads_;
    lock.unlock();
    log("BackgroundWork", "no further thread can be started; the work waits for one that comes free");
  }

  void end() {
    std::deque<std::function<void()>> dropped;
    std::unique_lock lock(mutex_);
    isEnding_ = true;
    dropped.swap(jobs_);
    wake_.notify_all();
    threadEnded_.wait(lock, [this] { return threads_ == 0; });
  }

  std::size_t threadCount() const {
    std::lock_guard const lock(mutex_);
    return threads_;
  }

 private:
  bool startThread() {
    try {
      std::thread([self = shared_from_this()] { self->work(); }).detach();
      return true;
    } catch (std::system_error const&) {
      return false;
    }
  }

  void work() {
    (void)pthread_setname_np(pthread_self(), quality_ == QualityOfService::utility ? "morla-utility" : "morla-work");
    takePriorityOf(quality_);
    std::unique_lock lock(mutex_);
    while (waitForJob(lock)) {
      auto job = std::move(jobs_.front());
      jobs_.pop_front();
      lock.unlock();
      job();
      job = nullptr;  // what the job holds must not wait for the next one
      lock.lock();
    }
    --threads_;
    threadEnded_.notify_all();
  }

  bool waitForJob(std::unique_lock<std::mutex>& lock) {
    ++idle_;
    wake_.wait_for(lock, idleTime_, [this] { return isEnding_ || !jobs_.empty(); });
    --idle_;
    return !jobs_.empty();
  }

  QualityOfService const quality_;
  std::chrono::milliseconds const idleTime_;
  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable threadEnded_;
  std::deque<std::function<void()>> jobs_;
  std::size_t threads_ = 0;
  std::size_t idle_ = 0;
  bool isEnding_ = false;
};

ThreadedBackgroundWork::ThreadedBackgroundWork(std::chrono::milliseconds idleTime)
    : userInitiated_(std::make_shared<Pool>(QualityOfService::userInitiated, idleTime)),
      utility_(std::make_shared<Pool>(QualityOfService::utility, idleTime)) {}

ThreadedBackgroundWork::~ThreadedBackgroundWork() {
  userInitiated_->end();
  utility_->end();
}

void ThreadedBackgroundWork::run(QualityOfService quality, std::function<void()> work) {
  (quality == QualityOfService::utility ? *utility_ : *userInitiated_).run(std::move(work));
}

std::size_t ThreadedBackgroundWork::threadCount() const {
  return userInitiated_->threadCount() + utility_->threadCount();
}

}  // namespace morla::linux
