#pragma once

#import <Foundation/Foundation.h>

#include <functional>

NS_ASSUME_NONNULL_BEGIN

namespace morla::macos {

/// An observation of one of the system's notifications, until the end of this object. Main thread.
class Observation {
 public:
  /// `observer` is called on the main thread. `object` may be nil: any sender.
  Observation(NSNotificationCenter* centre, NSNotificationName name, id _Nullable object,
              std::function<void()> observer)
      : centre_(centre),
        token_([centre addObserverForName:name
                                   object:object
                                    queue:[NSOperationQueue mainQueue]
                               usingBlock:^(NSNotification*) {
                                 observer();
                               }]) {}
  ~Observation() { [centre_ removeObserver:token_]; }
  Observation(Observation const&) = delete;
  Observation& operator=(Observation const&) = delete;

 private:
  NSNotificationCenter* centre_;
  id<NSObject> token_;
};

}  // namespace morla::macos

NS_ASSUME_NONNULL_END
