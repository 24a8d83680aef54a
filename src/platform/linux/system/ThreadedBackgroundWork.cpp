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
#include "base/MainThread.h"

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
  Pool(QualityOfService quality, std::chrono::milliseconds idleTime, StartThread startThread)
      : quality_(quality), idleTime_(idleTime), startThread_(std::move(startThread)) {}

  void add(std::function<void()> work) {
    std::lock_guard const lock(mutex_);
    jobs_.push_back(std::move(work));
    wake_.notify_one();
  }

  /// Until each job has one that is idle or about to begin. False when the system refuses one.
  bool startMissingThreads() {
    std::unique_lock lock(mutex_);
    // Threads that were woken, or that begin, and have not taken their job yet still count: hence the comparison.
    while (jobs_.size() > idle_ + starting_) {
      ++threads_;
      ++starting_;
      lock.unlock();
      bool const isStarted = startThread_([self = shared_from_this()] { self->work(); });
      lock.lock();
      if (isStarted) continue;
      --threads_;
      --starting_;
      return false;
    }
    return true;
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
  void work() {
    (void)pthread_setname_np(pthread_self(), quality_ == QualityOfService::utility ? "morla-utility" : "morla-work");
    takePriorityOf(quality_);
    std::unique_lock lock(mutex_);
    --starting_;
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
  StartThread const startThread_;
  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable threadEnded_;
  std::deque<std::function<void()>> jobs_;
  std::size_t threads_ = 0;
  std::size_t idle_ = 0;
  std::size_t starting_ = 0;
  bool isEnding_ = false;
};

ThreadedBackgroundWork::ThreadedBackgroundWork(MainLoop& loop, std::chrono::milliseconds idleTime,
                                               StartThread startThread)
    : loop_(loop),
      userInitiated_(std::make_shared<Pool>(QualityOfService::userInitiated, idleTime, startThread)),
      utility_(std::make_shared<Pool>(QualityOfService::utility, idleTime, std::move(startThread))) {}

ThreadedBackgroundWork::~ThreadedBackgroundWork() {
  userInitiated_->end();
  utility_->end();
}

void ThreadedBackgroundWork::run(QualityOfService quality, std::function<void()> work) {
  assertIsMainThread();
  (quality == QualityOfService::utility ? *utility_ : *userInitiated_).add(std::move(work));
  startMissingThreads();
}

bool ThreadedBackgroundWork::startDetachedThread(std::function<void()> body) {
  try {
    std::thread(std::move(body)).detach();
    return true;
  } catch (std::system_error const&) {
    return false;
  }
}

void ThreadedBackgroundWork::startMissingThreads() {
  // Who waits for a person goes first.
  if (userInitiated_->startMissingThreads() && utility_->startMissingThreads()) {
    isShort_ = false;
    return;
  }
  if (!std::exchange(isShort_, true)) {
    log("BackgroundWork", "no further thread can be started; the work waits until one can, or comes free");
  }
  if (retry_.isActive()) return;
  retry_ = loop_.after(kRetryInterval, [this] {
    retry_.end();
    startMissingThreads();
  });
}

std::size_t ThreadedBackgroundWork::threadCount() const {
  return userInitiated_->threadCount() + utility_->threadCount();
}

}  // namespace morla::linux
