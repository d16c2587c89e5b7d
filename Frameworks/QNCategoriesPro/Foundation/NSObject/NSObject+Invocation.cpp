#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Invocation.h"

#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Foundation/KeyValueCoding/BoxedInvocation.h"
#include "Platform/Foundation/System/NSThread.h"

id qn::performSelector(const id &receiver, SEL selector, const std::vector<id> &arguments) {
    return make<BoxedInvocation>(receiver, selector, arguments)->invoke();
}

Ref<NSTimer> qn::performSelectorAfterDelay(const id &receiver, SEL selector, const std::vector<id> &arguments,
                                           NSTimeInterval delay) {
    return NSTimer::scheduledTimerWithTimeInterval(
        delay, make<BoxedInvocation>(receiver, selector, arguments), sel_registerName("run"), nullptr, false);
}

void qn::performSelectorOnMainThread(const id &receiver, SEL selector, const std::vector<id> &arguments) {
    performSelectorOnQueue(dispatch::mainQueue(), receiver, selector, arguments);
}

id qn::performSelectorOnMainThreadAndWait(const id &receiver, SEL selector,
                                          const std::vector<id> &arguments) {
    id result;
    const auto call = make<BoxedInvocation>(receiver, selector, arguments);
    dispatch::mainQueue().sync([&] { result = call->invoke(); });
    return result;
}

void qn::performSelectorInBackground(const id &receiver, SEL selector, const std::vector<id> &arguments) {
    const auto call = make<BoxedInvocation>(receiver, selector, arguments);
    NSThreadDetachNewThread([call] { call->invoke(); });
}

void qn::performSelectorOnQueue(dispatch::Queue &queue, const id &receiver, SEL selector,
                                const std::vector<id> &arguments) {
    const auto call = make<BoxedInvocation>(receiver, selector, arguments);
    queue.async([call] { call->invoke(); });
}
