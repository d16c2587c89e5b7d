// Qt without a screen, and time moved by hand, for tests of what is seen.
//
// One application a process: ctest runs every case in a process of its own.
#pragma once

#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Platform/Foundation/System/Localization.h"
#include "Platform/RunLoop/NSRunLoop.h"
#include "Tests/Support/Testing.h"

#include <QApplication>
#include <QDeadlineTimer>

class QtTesting : NoCopies {
public:
    dispatch::ManualClock clock;

    /// What falls due meanwhile is served with the next events.
    void advance(std::chrono::nanoseconds duration) {
        clock.advance(duration);
        NSRunLoop::mainRunLoop()->wakeUp();
    }

    /// The same, and serves it.
    void elapse(std::chrono::nanoseconds duration) {
        advance(duration);
        settle();
    }

    /// Serves events until the condition holds; false when it does not for a very long time.
    static bool eventually(const std::function<bool()> &condition) {
        for (const QDeadlineTimer patience(60s); !condition(); std::this_thread::yield()) {
            if (patience.hasExpired())
                return false;
            QCoreApplication::processEvents();
        }
        return true;
    }
    /// Serves what there is to serve.
    static void settle() {
        for (int round = 0; round < 20 || dispatch::mainQueue().hasWork(); ++round)
            QCoreApplication::processEvents();
    }

private:
    /// Prepares the process, and is the number of its arguments.
    static int &prepared() {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        ::setenv("LC_ALL", "C.UTF-8", 1); // the language is that of LANGUAGE, or English
        NSLocalizationPrepare();
        static int count = 1;
        return count;
    }

    const dispatch::ClockScope scope_{clock};
    char name_[5] = "test";
    char *arguments_[2] = {name_, nullptr};
    const QApplication application_{prepared(), arguments_};
};
