// The system's time zones: a folder with a file for each (TimeZoneFile), named as "Europe/Berlin". What was
// read is kept. Any thread.
#pragma once

#include "Platform/Foundation/Dates/TimeZoneRules.h"

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>

class TimeZoneDatabase {
public:
    using Rules = std::shared_ptr<const TimeZoneRules>;
    struct Zone {
        std::string name;
        Rules rules; ///< null for no zone
    };

    explicit TimeZoneDatabase(std::filesystem::path folder) : folder_(std::move(folder)) {}
    /// That of the environment's TZDIR, or of /usr/share/zoneinfo.
    static TimeZoneDatabase &system();

    /// Null for a name without a zone, and for one that leads out of the folder.
    Rules rules(const std::string &name);
    /// What the C library takes for the environment's TZ: a name here, the path of a file elsewhere, or rules
    /// as of PosixTimeZone, each after a colon or not; UTC for an empty text. Without rules for every other.
    Zone zoneOfEnvironment(const std::string &text);
    /// That of a file which is a link to one in the folder, such as /etc/localtime; named by its path when it
    /// is none.
    Zone zoneOfFile(const std::filesystem::path &file);

private:
    const std::filesystem::path folder_;
    std::mutex lock_;
    std::map<std::string, Rules> known_; ///< by name; under the lock
};
