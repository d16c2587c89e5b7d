#include "Tools/zkprinter/Printers/Journal.h"

#include "Platform/Foundation/Text/ControlCharacters.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

NSLogSink &journal() {
    static auto &sink = *new NSLogSink(NSLogToSystemLogOnly);
    return sink;
}

void enter(const std::string &line) {
    journal()(NSLogLevel::info, escapedControlCharacters(line));
}

std::string shown(std::optional<std::int32_t> threshold) {
    if (!threshold)
        return "unknown";
    return *threshold == 0 ? "off" : std::to_string(*threshold) + " %";
}

/// In quotes that the text cannot end.
std::string quoted(const std::string &text) {
    std::string quoted = "\"";
    for (const char character : text)
        (character == '"' || character == '\\' ? quoted += '\\' : quoted) += character;
    return quoted + "\"";
}

std::string userName() {
    std::vector<char> texts(16384);
    passwd entry{};
    passwd *found = nullptr;
    const uid_t user = getuid();
    getpwuid_r(user, &entry, texts.data(), texts.size(), &found);
    std::string name = found ? found->pw_name : std::to_string(user);
    const char *const caller = std::getenv("SUDO_USER"); // anybody else could set it to anything
    if (user == 0 && caller && *caller)
        name += " for " + std::string(caller);
    return name;
}

} // namespace

void setJournal(NSLogSink sink) {
    journal() = std::move(sink);
}

void journalFailure(const std::string &sentence) {
    enter(sentence);
}

void journalChange(const std::string &queue, std::optional<std::int32_t> old, std::int32_t threshold) {
    enter("reminder changed: queue " + quoted(queue) + ", old " + shown(old) + ", new " + shown(threshold) +
          ", user " + userName());
}
