#include "Classes/UtilityController.h"

#include "Classes/AppDelegate.h"
#include "Classes/TipWindow.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/RunLoop/NSRunLoop.h"
#include "Platform/Runtime/Object/Class.h"

NS_IMPLEMENTATION(UtilityController) {
    cls.instantiate([] { return shareInstance(); })
        .method<&UtilityController::stopRefreshTimer>("stopRefreshTimer");
}

Ref<UtilityController> UtilityController::shareInstance() {
    static const Ref<UtilityController> &instance = *new Ref<UtilityController>(new UtilityController);
    return instance;
}

UtilityController::UtilityController() : printerNameArray_(NSMutableArray::array()) {}

void UtilityController::startRefreshTimer(NSInteger seconds) {
    const auto timer = NSTimer::scheduledTimerWithTimeInterval(
        static_cast<NSTimeInterval>(seconds), self(), sel_registerName("stopRefreshTimer"), nullptr, true);
    refreshWindowTimer_ = timer;
    NSRunLoop::currentRunLoop()->addTimer(timer, NSModalPanelRunLoopMode);
}

void UtilityController::stopRefreshTimer() {
    const AppDelegate *delegate = AppDelegate::current();
    if (auto *tipWindow = delegate ? dynamic_cast<TipWindow *>(delegate->tipWindow()) : nullptr)
        tipWindow->setStopModalState();
    if (const auto timer = refreshWindowTimer_.lock())
        timer->invalidate();
    refreshWindowTimer_.reset();
}
