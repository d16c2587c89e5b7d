#include "Platform/Foundation/System/NSLog.h"

#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Foundation/Text/Unicode.h"
#include "Platform/Locking/Mutex.h"

#include <cstdio>
#include <syslog.h>
#include <unistd.h>

namespace {

struct Log {
    locking::Mutex lock;
    NSLogSink sink ZK_GUARDED_BY(lock);
};

Log &theLog() {
    static auto &log = *new Log;
    return log;
}

void toSystemLog(int priority, std::string_view line) {
    syslog(LOG_USER | priority, "%.*s", static_cast<int>(line.size()), line.data());
}

void toStandardError(std::string_view line) {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
}

void toSystemLogAndTerminal(NSLogLevel level, std::string_view line) {
    NSLogToSystemLogOnly(level, line);
    if (level == NSLogLevel::info && isatty(STDERR_FILENO))
        toStandardError(line);
}

} // namespace

NSLogSink NSLogSetSink(NSLogSink sink) {
    const locking::MutexLock guard(theLog().lock);
    return std::exchange(theLog().sink, std::move(sink));
}

void NSLogToSystemLogOnly(NSLogLevel level, std::string_view line) {
    if (level == NSLogLevel::info) // the system's journal would keep debug entries, too
        toSystemLog(LOG_INFO, line);
}

void NSLogVerbosely(NSLogLevel level, std::string_view line) {
    toSystemLog(level == NSLogLevel::info ? LOG_INFO : LOG_DEBUG, line);
    toStandardError(line);
}

void NSLogArguments(NSLogLevel level, std::string_view format, std::span<const FormatArgument> arguments) {
    // Kept per thread, so that an entry allocates nothing once the buffers have grown. They are moved out
    // while in use, since an object's description may log itself.
    thread_local std::string spareEntry, spareLine;
    std::string entry = std::move(spareEntry), line = std::move(spareLine);
    entry.clear();
    line.clear();
    formatUTF8(entry, format, arguments);
    if (!unicode::isValidUTF8(entry)) // a C string from outside
        entry = make<NSString>(formatUTF16(format, arguments))->utf8();
    const auto end = entry.find_last_not_of('\n');
    appendWithEscapedControlCharacters(
        line, std::string_view(entry).substr(0, end == std::string::npos ? 0 : end + 1));
    {
        const locking::MutexLock guard(theLog().lock);
        theLog().sink ? theLog().sink(level, line) : toSystemLogAndTerminal(level, line);
    }
    spareEntry = std::move(entry);
    spareLine = std::move(line);
}
