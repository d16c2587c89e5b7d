// Lets Qt's event loop drive the main run loop: its timers and the main queue are served between Qt's own
// events, and Qt sleeps until the next of them is due.
//
// Threads: lives on the main thread; `wake` may be called from any.
#pragma once

#include "Platform/RunLoop/NSRunLoop.h"

#include <QObject>
#include <QTimer>

#include <atomic>
#include <functional>

#pragma GCC visibility push(default)

class RunLoopBridge final : public QObject {
public:
    /// `mode` returns the mode to serve at the moment.
    explicit RunLoopBridge(std::function<NSRunLoopMode()> mode);
    ~RunLoopBridge() override;

    /// Makes Qt serve the run loop soon; does nothing if that is already scheduled.
    void wake();

    bool event(QEvent *event) override;

private:
    void serve();
    void sleepUntilNext();

    const std::function<NSRunLoopMode()> mode_;
    const Ref<NSRunLoop> loop_ = NSRunLoop::mainRunLoop();
    QTimer timer_;
    std::atomic<bool> waking_ = false;
};

#pragma GCC visibility pop
