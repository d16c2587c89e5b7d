// Takes the log's lines, of all threads, as long as it lives.
#pragma once

#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Locking/Mutex.h"
#include "Tests/Support/Testing.h"

class LogLines : NoCopies {
public:
    LogLines()
        : previous_(NSLogSetSink([this](NSLogLevel, std::string_view line) {
              const locking::MutexLock guard(mutex_);
              lines_.emplace_back(line);
          })) {}
    ~LogLines() { NSLogSetSink(std::move(previous_)); }

    /// Those since the last time.
    Lines take() {
        const locking::MutexLock guard(mutex_);
        return std::exchange(lines_, {});
    }

private:
    locking::Mutex mutex_;
    Lines lines_ ZK_GUARDED_BY(mutex_);
    NSLogSink previous_;
};
