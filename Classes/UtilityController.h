// Owns the entries of the printer table, and starts the timers that end modal runs of the tip window.
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
    /// Allocating and copying return the only instance, too.
    static Ref<UtilityController> allocWithZone() { return shareInstance(); }
    id copy() const override { return shareInstance(); }

    /// The entries (see Manager/SupportedQueues.h); empty until the print service has answered.
    Ref<NSMutableArray> printerNameArray() const { return printerNameArray_; }

    /// Starts a timer that ends the tip window's modal run in that many seconds. A timer that is armed
    /// already is forgotten, but not stopped: it goes on firing at its own interval.
    void startRefreshTimer(NSInteger seconds);
    /// The timer's action: ends the tip window's modal run and disarms the timer.
    void stopRefreshTimer();

private:
    UtilityController();

    const Ref<NSMutableArray> printerNameArray_;
    Weak<NSTimer> refreshWindowTimer_; // the run loop keeps it
};
