#include "platform/macos/GlobalQueues.h"

#include <utility>

#include "base/MainThread.h"
#include "platform/macos/Dispatch.h"

namespace morla::macos {
namespace {

qos_class_t classOf(QualityOfService quality) {
  switch (quality) {
    case QualityOfService::userInitiated:
      return QOS_CLASS_USER_INITIATED;
    case QualityOfService::utility:
      return QOS_CLASS_UTILITY;
  }
  return QOS_CLASS_DEFAULT;
}

}  // namespace

void GlobalQueues::run(QualityOfService quality, std::function<void()> work) {
  assertIsMainThread();
  dispatch(dispatch_get_global_queue(classOf(quality), 0), std::move(work));
}

}  // namespace morla::macos
