// The system's time zones: a folder with one file per zone (TimeZoneFile.h), e.g. "Europe/Berlin". Zones that
// were read are kept. Safe from any thread.
#pragma once

#include "Platform/Foundation/Dates/TimeZoneRules.h"
#include "Platform/Locking/Mutex.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>

class TimeZoneDatabase {
public:
    using Rules = std::shared_ptr<const TimeZoneRules>;
    struct Zone {
        std::string name;
        Rules rules; ///< null when there is no such zone
    };

    explicit TimeZoneDatabase(std::filesystem::path folder) : folder_(std::move(folder)) {}
    /// The database in the folder of the environment's TZDIR, or in /usr/share/zoneinfo.
    static TimeZoneDatabase &system();

    /// Null for a name without a zone, and for one that leads out of the folder.
    Rules rules(const std::string &name);
    /// The zone for a value of the environment's TZ, as the C library understands it: a name in this
    /// database, the absolute path of a file, or rules as in PosixTimeZone.h, each optionally after a colon;
    /// UTC for an empty text.
    Zone zoneOfEnvironment(const std::string &text);
    /// The zone of a file. Named after the file in this database that it is a link to, as /etc/localtime is,
    /// or by its path.
    Zone zoneOfFile(const std::filesystem::path &file);

private:
    const std::filesystem::path folder_;
    locking::Mutex lock_;
    std::map<std::string, Rules> known_ ZK_GUARDED_BY(lock_); ///< by name
};
