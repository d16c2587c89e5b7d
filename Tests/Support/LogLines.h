// Takes the log's lines, of all threads, as long as it lives.
#pragma once

#include "Platform/Foundation/System/NSLog.h"

#include <mutex>
#include <string>
#include <utility>
#include <vector>

using Lines = std::vector<std::string>;

class LogLines {
public:
    LogLines()
        : previous_(NSLogSetSink([this](NSLogLevel, std::string_view line) {
              const std::scoped_lock guard(mutex_);
              lines_.emplace_back(line);
          })) {}
    LogLines(const LogLines &) = delete;
    LogLines &operator=(const LogLines &) = delete;
    ~LogLines() { NSLogSetSink(std::move(previous_)); }

    /// Those since the last time.
    Lines take() {
        const std::scoped_lock guard(mutex_);
        return std::exchange(lines_, {});
    }

private:
    std::mutex mutex_;
    Lines lines_; // guarded by mutex_
    NSLogSink previous_;
};
