#include "Frameworks/QNCategoriesPro/Foundation/NSTimer/NSTimer+QNCommon.h"

#include "Platform/Runtime/Object/Class.h"

namespace {

constexpr const char *execBlockName = "_qn_ExecBlock:";

/// Makes the timer class answer `_qn_ExecBlock:`.
SEL execBlockSelector() {
    static const SEL selector = [] {
        runtime::addMethod<&qn::_qn_ExecBlock>(NSTimer::class_()->metaClass(), execBlockName);
        return sel_registerName(execBlockName);
    }();
    return selector;
}

[[maybe_unused]] const SEL answeredFromTheStart = execBlockSelector();

id copyOf(const Ref<qn::TimerBlock> &block) {
    return block ? block->copy() : nullptr;
}

} // namespace

void qn::pauseTimer(const Ref<NSTimer> &timer) {
    if (timer && timer->isValid())
        timer->setFireDate(NSDate::distantFuture());
}

void qn::resumeTimer(const Ref<NSTimer> &timer) {
    resumeTimerAfterTimeInterval(timer, 0);
}

void qn::resumeTimerAfterTimeInterval(const Ref<NSTimer> &timer, NSTimeInterval seconds) {
    if (timer && timer->isValid())
        timer->setFireDate(NSDate::dateWithTimeIntervalSinceNow(seconds));
}

Ref<NSTimer> qn::scheduledTimerWithTimeInterval(NSTimeInterval interval, const Ref<TimerBlock> &block,
                                                bool repeats) {
    return NSTimer::scheduledTimerWithTimeInterval(interval, NSTimer::class_()->self(), execBlockSelector(),
                                                   copyOf(block), repeats);
}

Ref<NSTimer> qn::timerWithTimeInterval(NSTimeInterval interval, const Ref<TimerBlock> &block, bool repeats) {
    return NSTimer::timerWithTimeInterval(interval, NSTimer::class_()->self(), execBlockSelector(),
                                          copyOf(block), repeats);
}

void qn::_qn_ExecBlock(const Ref<NSTimer> &timer) {
    if (const auto block = asBlock<void(const Ref<NSTimer> &)>(timer ? timer->userInfo() : nullptr))
        (*block)(timer);
}
