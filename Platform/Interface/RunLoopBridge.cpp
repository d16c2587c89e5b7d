#include "Platform/Interface/RunLoopBridge.h"

#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Dispatch/Time/Clock.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <limits>

using dispatch::Clock;
using dispatch::Instant;

namespace {
const auto serveEvent = static_cast<QEvent::Type>(QEvent::registerEventType());
} // namespace

RunLoopBridge::RunLoopBridge(std::function<NSRunLoopMode()> mode) : mode_(std::move(mode)) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] { serve(); });
    loop_->setWaker([this] { wake(); });
    wake();
}

RunLoopBridge::~RunLoopBridge() {
    loop_->setWaker(nullptr);
}

void RunLoopBridge::wake() {
    if (!waking_.exchange(true))
        QCoreApplication::postEvent(this, new QEvent(serveEvent));
}

bool RunLoopBridge::event(QEvent *event) {
    if (event->type() != serveEvent)
        return QObject::event(event);
    waking_ = false;
    serve();
    return true;
}

void RunLoopBridge::serve() {
    // A block or timer may run a modal session in here; that session's events serve the rest.
    const bool ran = loop_->runOnce(mode_());
    if (ran || dispatch::mainQueue().hasWork())
        wake(); // further work waits for Qt's own events
    else
        sleepUntilNext();
}

void RunLoopBridge::sleepUntilNext() {
    const Instant next = loop_->nextInstant(mode_());
    if (next == Instant::distantFuture())
        return timer_.stop();
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(next - Clock::current().now()).count();
    timer_.start(static_cast<int>(std::clamp<std::int64_t>(wait, 0, std::numeric_limits<int>::max())));
}
