// Keeps track of the maker's printers that are attached by USB.
//
//     ZKManager::shared()->zk_discoverPrinter(printerListCollector(ZKManager::shared()->printerList()));
//
// | state      | passes                                                                        |
// |------------|-------------------------------------------------------------------------------|
// | idle       | none; before `zk_discoverPrinter`                                              |
// | running    | one at once, then one every 2 seconds                                         |
// | suppressed | `stopRepeatDiscover` is true: the timer fires, but passes return at once      |
// | stopped    | none; after `zk_stopDiscoverPrinter`                                          |
//
// Threads: the thread whose run loop the discovery was started on; it blocks for as long as the transport
// takes to list. `printerList` may be read, and `stopRepeatDiscover` set, from any thread.
#pragma once

#include "Platform/Locking/Mutex.h"
#include "Platform/RunLoop/NSTimer.h"
#include "Platform/Runtime/Object/NSBlock.h"

#include <atomic>

class ZKSafeMutableArray;
class ZKUSB;

/// Receives each printer that a pass found, on the thread of the pass.
using DiscoveryCallback = Block<void(const Ref<ZKUSB> &printer)>;

class ZKManager : public NSObject {
    NS_CLASS(ZKManager, NSObject)
public:
    /// Seconds from one pass to the next.
    static constexpr NSTimeInterval discoveryInterval = 2.0;

    /// The only instance.
    static Ref<ZKManager> shared();
    /// Allocating and copying return the only instance, too.
    static Ref<ZKManager> allocWithZone() { return shared(); }
    id copy() const override { return shared(); }

    bool stopRepeatDiscover() const { return stopRepeatDiscover_; }
    void setStopRepeatDiscover(bool stop) { stopRepeatDiscover_ = stop; }
    /// The printers of the latest pass, as the callback collected them; empty before the first.
    Ref<ZKSafeMutableArray> printerList();
    /// Stores a copy.
    void setPrinterList(const Ref<ZKSafeMutableArray> &list);
    Ref<DiscoveryCallback> callback() const { return callback_; }
    void setCallback(const Ref<DiscoveryCallback> &callback);
    /// The discovery timer, which its run loop owns; none once that has let it go.
    Ref<NSTimer> localTimer() const { return localTimer_.lock(); }
    void setLocalTimer(const Ref<NSTimer> &timer) { localTimer_ = timer; }

    /// Starts repeated discovery on the calling thread's run loop. A second call replaces callback and timer
    /// without stopping the earlier timer, and `stopRepeatDiscover` stays as it is.
    void zk_discoverPrinter(const Ref<DiscoveryCallback> &callback);
    /// One pass: empties the list and passes a new record of each attached printer to the callback, if there
    /// is one.
    void discoverPrinter();
    /// Ends discovery; for good, unless `stopRepeatDiscover` is set to false again before it is started anew.
    void zk_stopDiscoverPrinter();

private:
    ZKManager() = default;

    std::atomic<bool> stopRepeatDiscover_ = false;
    locking::Mutex printerListField_;
    Ref<ZKSafeMutableArray> printerList_ ZK_GUARDED_BY(printerListField_);
    Ref<DiscoveryCallback> callback_;
    Weak<NSTimer> localTimer_;
};
