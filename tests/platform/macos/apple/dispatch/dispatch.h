// The declarations of Apple's dispatch library that the products use; see Foundation/Foundation.h.
// In Objective-C its queues are objects.
#pragma once

#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@protocol OS_dispatch_queue <NSObject>
@end

@protocol OS_dispatch_queue_serial <OS_dispatch_queue>
@end

@protocol OS_dispatch_queue_main <OS_dispatch_queue_serial>
@end

typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
typedef NSObject<OS_dispatch_queue_main>* dispatch_queue_main_t;
typedef void (*dispatch_function_t)(void* _Nullable);

extern "C" {

dispatch_queue_main_t dispatch_get_main_queue(void);
void dispatch_async_f(dispatch_queue_t queue, void* _Nullable context, dispatch_function_t work);

}  // extern "C"

#pragma clang assume_nonnull end
