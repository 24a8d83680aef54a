#pragma once

#import <Foundation/Foundation.h>

#include <functional>
#include <memory>
#include <utility>

namespace morla::macos {

/// Runs `work` once on `queue` and destroys it there, with what it holds. Not by a block: its copies would keep what
/// the work holds alive on this thread, maybe longer than on the other one. Any thread.
inline void dispatch(dispatch_queue_t queue, std::function<void()> work) {
  // A moved-from function may still hold a small closure; an empty one does not.
  auto owned = std::make_unique<std::function<void()>>(std::exchange(work, nullptr));
  dispatch_async_f(queue, owned.release(), [](void* context) {
    std::unique_ptr<std::function<void()>> const held(static_cast<std::function<void()>*>(context));
    // A worker thread empties its own pool only when it has nothing left to do.
    @autoreleasepool {
      (*held)();
    }
  });
}

}  // namespace morla::macos
