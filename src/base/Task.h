#pragma once

#include <coroutine>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

#include "base/BackgroundWork.h"
#include "base/Cancellation.h"
#include "base/MainLoop.h"

/// Asynchronous steps as coroutines, on the main thread alone.
///
/// `Task<T>` is lazy: it starts when it is awaited. `detach(task)` is the one root that nobody awaits. A coroutine is
/// resumed by MainLoop::post only, so never inside the call that made its answer ready. When the thing that would have
/// resumed it is dropped instead (the loop ended), the whole chain up to its root is destroyed.
///
/// Parameters of a coroutine are taken by value, and `co_await` stands only as a whole statement or initialiser, with
/// no lambda that captures in its operand: g++ 12 miscompiles both.
namespace morla {

namespace detail {

/// What every promise has: the way up to the root, so that an abandoned chain can be destroyed from its leaf.
struct PromiseBase {
  PromiseBase* awaitedBy = nullptr;
  std::coroutine_handle<> self;

  [[noreturn]] void unhandled_exception() noexcept { std::terminate(); }

  [[nodiscard]] PromiseBase& root() {
    PromiseBase* promise = this;
    while (promise->awaitedBy != nullptr) promise = promise->awaitedBy;
    return *promise;
  }
};

struct ResumeAwaiting {
  [[nodiscard]] bool await_ready() const noexcept { return false; }
  template <typename Promise>
  std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> finished) const noexcept {
    return finished.promise().awaitedBy->self;
  }
  void await_resume() const noexcept {}
};

template <typename T>
struct TaskPromise;

/// Resumes a suspended coroutine at most once, on a later turn of the main loop; when it goes without having done so,
/// the coroutine's whole chain is destroyed. Shared by everything that might bring the answer.
class Resumption {
 public:
  Resumption(MainLoop& loop, PromiseBase& promise) : loop_(loop), promise_(&promise) {}
  Resumption(Resumption const&) = delete;
  Resumption& operator=(Resumption const&) = delete;
  ~Resumption() {
    if (promise_ != nullptr) promise_->root().self.destroy();
  }

  /// Any thread; the caller sees to it that only the first call counts. `store` runs on the main thread just before.
  static void schedule(std::shared_ptr<Resumption> resumption, std::function<void()> store) {
    auto& loop = resumption->loop_;
    loop.post([resumption = std::move(resumption), store = std::move(store)] {
      auto* promise = std::exchange(resumption->promise_, nullptr);
      if (promise == nullptr) return;
      store();
      promise->self.resume();
    });
  }

 private:
  MainLoop& loop_;
  PromiseBase* promise_;
};

}  // namespace detail

template <typename T = void>
class [[nodiscard]] Task {
 public:
  using promise_type = detail::TaskPromise<T>;

  Task(Task&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Task& operator=(Task&&) = delete;
  ~Task() {
    if (handle_) handle_.destroy();
  }

  [[nodiscard]] bool await_ready() const noexcept { return false; }
  template <typename Promise>
  std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> awaiting) noexcept {
    handle_.promise().awaitedBy = &awaiting.promise();
    return handle_;
  }
  T await_resume() { return handle_.promise().take(); }

 private:
  friend promise_type;
  explicit Task(std::coroutine_handle<promise_type> handle) : handle_(handle) {}
  std::coroutine_handle<promise_type> handle_;
};

namespace detail {

template <typename T>
struct TaskPromise : PromiseBase {
  std::optional<T> value;

  Task<T> get_return_object() {
    auto const handle = std::coroutine_handle<TaskPromise>::from_promise(*this);
    self = handle;
    return Task<T>(handle);
  }
  std::suspend_always initial_suspend() noexcept { return {}; }
  ResumeAwaiting final_suspend() noexcept { return {}; }
  void return_value(T result) { value = std::move(result); }
  T take() { return std::move(*value); }
};

template <>
struct TaskPromise<void> : PromiseBase {
  Task<void> get_return_object() {
    auto const handle = std::coroutine_handle<TaskPromise>::from_promise(*this);
    self = handle;
    return Task<void>(handle);
  }
  std::suspend_always initial_suspend() noexcept { return {}; }
  ResumeAwaiting final_suspend() noexcept { return {}; }
  void return_void() noexcept {}
  void take() noexcept {}
};

struct Detached {
  struct promise_type : PromiseBase {
    Detached get_return_object() {
      self = std::coroutine_handle<promise_type>::from_promise(*this);
      return {};
    }
    std::suspend_never initial_suspend() noexcept { return {}; }
    std::suspend_never final_suspend() noexcept { return {}; }
    void return_void() noexcept {}
  };
};

inline Detached runToEnd(Task<void> task) {
  co_await std::move(task);
}

}  // namespace detail

/// Starts `task` now; it runs to its end with nobody waiting. Main thread.
inline void detach(Task<void> task) {
  detail::runToEnd(std::move(task));
}

/// Awaits an answer that comes by callback. `start` is called once with a function that may be called on any thread;
/// its first call resumes the coroutine, later ones are ignored. `start` itself runs on the main thread.
template <typename T>
class [[nodiscard]] Answer {
 public:
  using Deliver = std::function<void(T)>;
  Answer(MainLoop& loop, std::function<void(Deliver)> start) : loop_(loop), start_(std::move(start)) {}

  [[nodiscard]] bool await_ready() const noexcept { return false; }
  template <typename Promise>
  void await_suspend(std::coroutine_handle<Promise> handle) {
    auto resumption = std::make_shared<detail::Resumption>(loop_, handle.promise());
    auto const start = std::move(start_);  // the frame that holds *this may be gone before start() returns
    start([this, resumption = std::move(resumption)](T value) {
      auto shared = std::make_shared<T>(std::move(value));
      detail::Resumption::schedule(resumption, [this, shared] { value_ = std::move(*shared); });
    });
  }
  T await_resume() { return std::move(*value_); }

 private:
  MainLoop& loop_;
  std::function<void(Deliver)> start_;
  std::optional<T> value_;
};

/// Runs `job` on a background thread and resumes the awaiting coroutine with its result.
template <typename T>
[[nodiscard]] Answer<T> inBackground(MainLoop& loop, BackgroundWork& background, QualityOfService quality,
                                     std::function<T()> job) {
  return Answer<T>(loop, [&background, quality, job = std::move(job)](typename Answer<T>::Deliver deliver) {
    background.run(quality, [job, deliver = std::move(deliver)] { deliver(job()); });
  });
}

enum class SleepEnd { elapsed, cancelled };

/// Suspends the awaiting coroutine for `duration`, or until `token` is cancelled, whichever comes first.
[[nodiscard]] inline Answer<SleepEnd> sleepFor(MainLoop& loop, Duration duration, CancellationToken token) {
  return Answer<SleepEnd>(loop, [&loop, duration, token](Answer<SleepEnd>::Deliver deliver) mutable {
    if (token.isCancelled()) {
      deliver(SleepEnd::cancelled);
      return;
    }
    // The timer alone keeps the wait alive, and with it the coroutine: when the loop drops the timer, all of it goes.
    struct Wait {
      Answer<SleepEnd>::Deliver deliver;
      Subscription timer;
      Subscription cancellation;

      void finish(SleepEnd end) {
        cancellation.end();
        auto const endedTimer = std::move(timer);
        std::exchange(deliver, nullptr)(end);
      }
    };
    auto wait = std::make_shared<Wait>();
    wait->deliver = std::move(deliver);
    wait->timer = loop.after(duration, [wait] { wait->finish(SleepEnd::elapsed); });
    wait->cancellation = token.onCancel([weak = std::weak_ptr(wait)] {
      if (auto const alive = weak.lock()) alive->finish(SleepEnd::cancelled);
    });
  });
}

}  // namespace morla
