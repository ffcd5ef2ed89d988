// The part of the main queue that the products use; tests run its tasks (SharedObjects.h).
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

typedef struct dispatch_queue_s* dispatch_queue_t;
typedef dispatch_queue_t dispatch_queue_main_t;
typedef void (*dispatch_function_t)(void*);

dispatch_queue_main_t dispatch_get_main_queue(void);

/// May be called on any thread. Any queue except the main queue ends the program.
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);

#ifdef __cplusplus
}
#endif
