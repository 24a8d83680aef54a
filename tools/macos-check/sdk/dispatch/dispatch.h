#pragma once

#include <objc/objc.h>

#pragma clang assume_nonnull begin

@protocol OS_dispatch_object <NSObject>
@end
@protocol OS_dispatch_queue <OS_dispatch_object>
@end
@protocol OS_dispatch_queue_global <OS_dispatch_queue>
@end
@protocol OS_dispatch_queue_serial <OS_dispatch_queue>
@end
@protocol OS_dispatch_queue_main <OS_dispatch_queue_serial>
@end
@protocol OS_dispatch_source <OS_dispatch_object>
@end

typedef NSObject<OS_dispatch_object>* dispatch_object_t;
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
typedef NSObject<OS_dispatch_queue_global>* dispatch_queue_global_t;
typedef NSObject<OS_dispatch_queue_main>* dispatch_queue_main_t;
typedef NSObject<OS_dispatch_source>* dispatch_source_t;

typedef void (^dispatch_block_t)(void);
typedef void (*dispatch_function_t)(void* _Nullable);
typedef uint64_t dispatch_time_t;
#define DISPATCH_TIME_NOW (0ull)
#define DISPATCH_TIME_FOREVER (~0ull)

typedef enum : unsigned int {
  QOS_CLASS_DEFAULT = 0x15,
  QOS_CLASS_USER_INITIATED = 0x19,
  QOS_CLASS_UTILITY = 0x11,
} qos_class_t;

DECLARE_EXTERN dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);

DECLARE_EXTERN dispatch_queue_main_t dispatch_get_main_queue(void);
DECLARE_EXTERN dispatch_queue_global_t dispatch_get_global_queue(intptr_t identifier, uintptr_t flags);
DECLARE_EXTERN void dispatch_async_f(dispatch_queue_t queue, void* _Nullable context, dispatch_function_t work);
DECLARE_EXTERN void dispatch_activate(dispatch_object_t object);

typedef const struct dispatch_source_type_s* dispatch_source_type_t;
DECLARE_EXTERN const struct dispatch_source_type_s _dispatch_source_type_timer;
#define DISPATCH_SOURCE_TYPE_TIMER (&_dispatch_source_type_timer)

DECLARE_EXTERN RETURNS_RETAINED_OBJECT dispatch_source_t dispatch_source_create(dispatch_source_type_t type,
                                                                                uintptr_t handle, uintptr_t mask,
                                                                                dispatch_queue_t _Nullable queue);
DECLARE_EXTERN void dispatch_source_set_event_handler(dispatch_source_t source, dispatch_block_t _Nullable handler);
DECLARE_EXTERN void dispatch_source_set_timer(dispatch_source_t source, dispatch_time_t start, uint64_t interval,
                                              uint64_t leeway);
DECLARE_EXTERN void dispatch_source_cancel(dispatch_source_t source);

#pragma clang assume_nonnull end
