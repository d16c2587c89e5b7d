#include "Platform/Foundation/System/NSLog.h"

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

void appendEscaped(std::string &out, unsigned code) {
    static constexpr char digits[] = "0123456789ABCDEF";
    if (code == '\n')
        out += "\\n";
    else if (code == '\r')
        out += "\\r";
    else if (code == '\t')
        out += "\\t";
    else {
        out += "\\u";
        for (int shift = 12; shift >= 0; shift -= 4)
            out += digits[code >> shift & 15];
    }
}

/// The code and byte count of the control character at the front of `rest`; 0 bytes without one. Beyond ASCII
/// these are C1 controls, line and paragraph separators, and the marks that change the direction of text.
std::pair<unsigned, std::size_t> controlAtFront(std::string_view rest) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(rest[i]); };
    if (byte(0) < 0x20 || byte(0) == 0x7F)
        return {byte(0), 1};
    if (byte(0) == 0xC2 && rest.size() > 1 && byte(1) >= 0x80 && byte(1) < 0xA0)
        return {byte(1), 2};
    if (byte(0) == 0xE2 && rest.size() > 2 && (byte(1) == 0x80 || byte(1) == 0x81)) {
        const unsigned code = 0x2000u + (byte(1) & 3u) * 64 + (byte(2) & 63u);
        if ((code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069))
            return {code, 3};
    }
    return {0, 0};
}

void escapeInto(std::string &out, std::string_view text) {
    std::size_t plain = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] >= ' ' && text[at] < 0x7F) { // most of every text
            ++at;
            continue;
        }
        const auto [code, length] = controlAtFront(text.substr(at));
        if (length) {
            out.append(text, plain, at - plain);
            appendEscaped(out, code);
            plain = at + length;
        }
        at += length ? length : 1;
    }
    out.append(text, plain);
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

std::string escapedControlCharacters(std::string_view utf8) {
    std::string out;
    escapeInto(out, utf8);
    return out;
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
    escapeInto(line, std::string_view(entry).substr(0, end == std::string::npos ? 0 : end + 1));
    {
        const locking::MutexLock guard(theLog().lock);
        theLog().sink ? theLog().sink(level, line) : toSystemLogAndTerminal(level, line);
    }
    spareEntry = std::move(entry);
    spareLine = std::move(line);
}
