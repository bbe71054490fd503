// The one queue that Vellmoor puts work into; notes/MainQueue.mm plays it. GNUstep's headers include this wherever it
// is.
#pragma once

#ifdef __BLOCKS__
typedef struct StandInQueue* dispatch_queue_t;

dispatch_queue_t dispatch_get_main_queue(void);
void dispatch_async(dispatch_queue_t queue, void (^block)(void));
#endif
