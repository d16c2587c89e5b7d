#include "Platform/Foundation/Dates/TimeZoneDatabase.h"

#include "Platform/Foundation/Dates/PosixTimeZone.h"
#include "Platform/Foundation/Dates/TimeZoneFile.h"
#include "Platform/Foundation/System/NameBelowFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t largestFile = 1 << 20;

TimeZoneDatabase::Rules shared(std::optional<TimeZoneRules> rules) {
    return rules ? std::make_shared<const TimeZoneRules>(std::move(*rules)) : nullptr;
}

TimeZoneDatabase::Rules rulesOfFile(const fs::path &file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error) || fs::file_size(file, error) > largestFile || error)
        return nullptr;
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(stream), {});
    return shared(timeZoneRulesFromFile(bytes));
}

} // namespace

TimeZoneDatabase &TimeZoneDatabase::system() {
    static auto &database = *[] {
        const char *folder = std::getenv("TZDIR");
        return new TimeZoneDatabase(folder && *folder ? folder : "/usr/share/zoneinfo");
    }();
    return database;
}

TimeZoneDatabase::Rules TimeZoneDatabase::rules(const std::string &name) {
    if (name == "GMT") { // needs no file
        static const auto &gmt = *new Rules(std::make_shared<const TimeZoneRules>(TimeZoneRules::Offset{}));
        return gmt;
    }
    if (!isNameBelowFolder(name))
        return nullptr;
    const locking::MutexLock guard(lock_);
    if (const auto found = known_.find(name); found != known_.end())
        return found->second;
    Rules read = rulesOfFile(folder_ / name);
    if (read)
        known_.emplace(name, read);
    return read;
}

TimeZoneDatabase::Zone TimeZoneDatabase::zoneOfEnvironment(const std::string &text) {
    const std::string wanted = text.starts_with(':') ? text.substr(1) : text;
    if (wanted.empty())
        return {"GMT", rules("GMT")};
    if (fs::path(wanted).is_absolute())
        return zoneOfFile(wanted);
    if (auto named = rules(wanted))
        return {wanted, std::move(named)};
    const auto posix = PosixTimeZone::parse(wanted);
    return {wanted, posix ? shared(posix->rules()) : nullptr};
}

TimeZoneDatabase::Zone TimeZoneDatabase::zoneOfFile(const fs::path &file) {
    std::error_code error;
    const fs::path below = fs::canonical(file, error).lexically_relative(fs::canonical(folder_, error));
    if (auto named = rules(below.string()))
        return {below.string(), std::move(named)};
    return {file.string(), rulesOfFile(file)};
}
