// Owns the entries of the printer table, and the timer that ends each modal run of the tip window.
//
// | state | from                                                                              |
// |-------|-----------------------------------------------------------------------------------|
// | idle  | start; the timer's first firing                                                   |
// | armed | `startRefreshTimer`                                                               |
//
// Threads: the main thread; `shareInstance` may be called from any.
#pragma once

#include "Platform/RunLoop/NSTimer.h"
#include "Platform/Runtime/Object/NSObject.h"

class NSMutableArray;

class UtilityController : public NSObject {
    NS_CLASS(UtilityController, NSObject)
public:
    /// The only instance.
    static Ref<UtilityController> shareInstance();
    /// Allocating and copying yield the only instance, too.
    static Ref<UtilityController> allocWithZone() { return shareInstance(); }
    id copy() const override { return shareInstance(); }

    /// The entries (see Manager/QueueMatching.h), filled once, when the main view wakes.
    Ref<NSMutableArray> printerNameArray() const { return printerNameArray_; }

    /// Has the tip window's modal run ended in that many seconds. A timer that is armed already is neither
    /// stopped nor kept: it goes on firing at its own interval.
    void startRefreshTimer(NSInteger seconds);
    /// The timer's action: ends the tip window's modal run and disarms the timer.
    void stopRefreshTimer();

private:
    UtilityController();

    const Ref<NSMutableArray> printerNameArray_;
    Weak<NSTimer> refreshWindowTimer_; // the run loop keeps it
};
