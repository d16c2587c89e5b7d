// A call of any selector with its arguments as objects, to be made now or later.
//
//     const auto call = make<BoxedInvocation>(book, sel_registerName("setPages:"),
//                                             std::vector<id>{NSNumber::numberWithInt(320)});
//     call->invoke();
//
// Arguments and result are boxed as BoxedValue.h tells. Receiver and arguments are kept.
//
// Threads: `invoke` as the method that is called, one at a time.
#pragma once

#include "Platform/Foundation/KeyValueCoding/BoxedValue.h"
#include "Platform/Runtime/Object/Method.h"

#include <memory_resource>
#include <vector>

#pragma GCC visibility push(default)

class BoxedInvocation : public NSObject {
    NS_CLASS(BoxedInvocation, NSObject)
public:
    /// For a receiver of none it does nothing. Raises NSInvalidArgumentException, which names the receiver's
    /// class and the selector, when the receiver does not respond to it, when it takes another number of
    /// arguments, and when one of them is of a kind that does not fit, which is named by its position, from
    /// 1, and its encoding.
    BoxedInvocation(id receiver, SEL selector, const std::vector<id> &arguments);

    /// Makes the call. Returns none for a method that returns nothing. Passes on what the method raises.
    id invoke();
    /// The same without a result, for timers: the operation "run".
    void run() { invoke(); }

private:
    const id receiver_;
    const SEL selector_;
    Method method_ = nullptr;
    std::string_view resultType_;
    std::byte room_[5 * (sizeof(BoxedValue) + sizeof(void *))]; // more arguments take memory of their own
    std::pmr::monotonic_buffer_resource memory_{room_, sizeof room_};
    std::pmr::vector<BoxedValue> arguments_ = std::pmr::vector<BoxedValue>(&memory_);     // which do not move
    std::pmr::vector<const void *> addresses_ = std::pmr::vector<const void *>(&memory_); // no list of one
};

#pragma GCC visibility pop
