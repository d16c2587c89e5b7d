// Any selector with its arguments as objects: at once, later, on another thread or queue.
//
//     qn::performSelector(book, sel_registerName("setPages:"), {NSNumber::numberWithInt(320)});
//     qn::performSelectorOnMainThread(view, sel_registerName("show:inColor:"), {text, nullptr});
//
// Arguments become what the method takes and its result becomes an object as BoxedValue.h tells: numbers are
// NSNumber, structures and pointers NSValue, classes their class object, none stands for an object of none.
//
// All raise NSInvalidArgumentException at once, on the thread of the caller, when the receiver does not
// respond to the selector, when it takes another number of arguments and when an argument does not fit; the
// text names class, selector and position. Nothing happens for a receiver of none. Receiver and arguments are
// kept until the call has been made. What a method raises on another thread or a queue ends the process.
//
// Threads: any.
#pragma once

#include "Platform/Dispatch/Queues/Queue.h"
#include "Platform/RunLoop/NSTimer.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <vector>

#pragma GCC visibility push(default)

namespace qn {

/// Now, on this thread. Returns none for a method that returns nothing.
id performSelector(const id &receiver, SEL selector, const std::vector<id> &arguments = {});

/// In `delay` seconds, in the default mode of this thread's run loop, but never within this call. The timer
/// is there to take the call back: `invalidate`.
Ref<NSTimer> performSelectorAfterDelay(const id &receiver, SEL selector, const std::vector<id> &arguments,
                                       NSTimeInterval delay);

/// As soon as the main thread gets to it; on that thread itself after what it does now.
void performSelectorOnMainThread(const id &receiver, SEL selector, const std::vector<id> &arguments = {});
/// Waits for its end and gives its result; passes on what it raises. On the main thread it is made at once.
id performSelectorOnMainThreadAndWait(const id &receiver, SEL selector,
                                      const std::vector<id> &arguments = {});

/// On a new thread. Raises NSGenericException when the system has no thread left.
void performSelectorInBackground(const id &receiver, SEL selector, const std::vector<id> &arguments = {});

/// On the queue, which is to be there until then.
void performSelectorOnQueue(dispatch::Queue &queue, const id &receiver, SEL selector,
                            const std::vector<id> &arguments = {});

} // namespace qn

#pragma GCC visibility pop
