// The system's time zones: their files and texts beside the C library, and what is no zone.
#include "Platform/Foundation/Dates/PosixTimeZone.h"
#include "Platform/Foundation/Dates/TimeZoneDatabase.h"
#include "Platform/Foundation/Dates/TimeZoneFile.h"
#include "Tests/Support/EnvironmentScope.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/Testing.h"

#include <ctime>
#include <fstream>

namespace fs = std::filesystem;

namespace {

const fs::path systemFolder = "/usr/share/zoneinfo";

/// The C library's time zone for the length of a scope.
class CLibraryZone {
public:
    explicit CLibraryZone(const std::string &text) : variable_("TZ", text.c_str()) { ::tzset(); }

    long offsetAt(std::int64_t time) const {
        std::tm broken{};
        ::localtime_r(&time, &broken);
        return broken.tm_gmtoff;
    }

private:
    const EnvironmentScope variable_;
};

/// What is shown at a time, found by trying every offset of the days around it.
void expectShowing(const TimeZoneRules &rules, std::int64_t time) {
    const std::int64_t shown = time;
    std::set<std::int64_t> moments;
    for (std::int64_t near = shown - 2 * 86400; near <= shown + 2 * 86400; near += 900)
        if (const std::int64_t moment = shown - rules.at(near).seconds;
            moment + rules.at(moment).seconds == shown)
            moments.insert(moment);
    const std::int64_t first = rules.firstShowing(shown);
    if (moments.empty()) { // jumped over at the first
        ASSERT_GT(first + rules.at(first).seconds, shown) << time;
        ASSERT_LT(first - 1 + rules.at(first - 1).seconds, shown) << time;
        ASSERT_EQ(rules.whenClocksShow(shown), rules.at(first - 1)) << time;
    } else {
        ASSERT_EQ(first, *moments.begin()) << time;
        ASSERT_EQ(rules.whenClocksShow(shown), rules.at(*moments.rbegin())) << time;
    }
}

std::string bytesOf(const fs::path &file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

TEST(TimeZones, haveTheOffsetsOfTheCLibrary) {
    Random random(1);
    TimeZoneDatabase database(systemFolder);
    int zones = 0;
    for (auto entry = fs::recursive_directory_iterator(systemFolder); entry != fs::end(entry); ++entry) {
        const std::string name = entry->path().lexically_relative(systemFolder);
        if (name == "right" || name == "posix")
            entry.disable_recursion_pending();
        const auto rules = database.rules(name);
        if (!rules)
            continue;
        ++zones;
        const CLibraryZone library(name);
        for (int i = 0; i < 200; ++i) {
            const auto time =
                static_cast<std::int64_t>(random() % (i % 2 ? 8'000'000'000 : 500'000'000'000)) -
                4'000'000'000;
            ASSERT_EQ(rules->at(time).seconds, library.offsetAt(time)) << name << " " << time;
        }
    }
    EXPECT_GT(zones, 400);
}

TEST(TimeZones, findMomentsByWhatClocksShow) {
    Random random(2);
    TimeZoneDatabase database(systemFolder);
    for (const char *name :
         {"Europe/Berlin", "America/Sao_Paulo", "America/St_Johns", "Pacific/Apia", "America/Havana",
          "Africa/Casablanca", "Australia/Lord_Howe", "Asia/Kathmandu"}) {
        const auto rules = database.rules(name);
        ASSERT_TRUE(rules) << name;
        for (int attempts = 0; attempts < 80; ++attempts) {
            auto from = static_cast<std::int64_t>(random.below(20'000'000'000)) - 4'000'000'000,
                 to = from + 200 * 86400;
            if (rules->at(from) == rules->at(to))
                continue;
            while (to - from > 1)
                (rules->at((from + to) / 2) == rules->at(from) ? from : to) = (from + to) / 2;
            for (const std::int64_t near : {-90000, -3600, -1801, -1, 0, 1, 1800, 3599, 3600, 90000})
                expectShowing(*rules, to + rules->at(random.oneIn(2) ? from : to).seconds + near);
        }
    }
}

TEST(PosixTimeZones, haveTheOffsetsOfTheCLibrary) {
    Random random(3);
    const auto below = [&](std::size_t bound) { return std::to_string(random.below(bound)); };
    const auto day = [&](std::size_t firstMonth) { // of three months
        const std::string days = std::to_string(firstMonth * 30 + random.below(60)),
                          month = std::to_string(firstMonth + random.below(3)),
                          week = std::to_string(1 + random.below(5));
        const std::string kinds[] = {",M" + month + "." + week + "." + below(7), ",J" + days, "," + days};
        const std::string times[] = {"", "/" + below(24) + ":" + below(60) + ":" + below(60),
                                     "/-" + below(20), "/" + below(100)};
        return random.of(kinds) + random.of(times);
    };
    for (int round = 0; round < 300; ++round) {
        const bool south = random.oneIn(2);
        const std::string days = day(south ? 8 : 2) + day(south ? 2 : 8);
        const std::string text = (random.oneIn(2) ? "ABC" : "<+0545>") + std::string(random.below(2), '-') +
                                 below(12) + (random.oneIn(2) ? ":" + below(60) : "") +
                                 (random.oneIn(4) ? "" : (random.oneIn(2) ? "DEF" : "<-02>") + days);
        const auto zone = PosixTimeZone::parse(text);
        ASSERT_TRUE(zone) << text;
        const auto rules = zone->rules();
        const CLibraryZone library(text);
        for (int i = 0; i < 50; ++i) {
            const auto time =
                static_cast<std::int64_t>(random.below(400'000'000'000)) + 40'000'000; // 1971 on
            ASSERT_EQ(rules.at(time).seconds, library.offsetAt(time)) << text << " " << time;
        }
    }
    EXPECT_EQ(PosixTimeZone::parse("CET-1CEST")->rules().at(1'785'000'000).seconds, 7200);
    for (const char *no :
         {"", "Europe/Berlin", "UTC", "AB1", "CET25", "CET-1CEST,M3.5.0", "CET-1CEST,M13.5.0,M10.5.0",
          "CET-1CEST,M3.6.0,M10.5.0", "CET-1CEST,J0,J1", "CET-1CEST,366,1", "<CET-1", "CET-1:60",
          "CET-1CEST,M3.5.0/168,M10.5.0", "CET-1CEST,M3.5.0,M10.5.0x", "CET99999999999999"})
        EXPECT_FALSE(PosixTimeZone::parse(no)) << no;
}

TEST(TimeZoneFiles, areReadWithinTheirBytes) {
    Random random(4);
    for (const char *name : {"Europe/Berlin", "Asia/Tokyo"}) {
        const std::string bytes = bytesOf(systemFolder / name);
        ASSERT_TRUE(timeZoneRulesFromFile(bytes));
        for (std::size_t length = 0; length < bytes.size(); ++length)
            EXPECT_FALSE(timeZoneRulesFromFile(std::string(bytes, 0, length))) << length;
        for (int round = 0; round < 3000; ++round) {
            std::string changed = bytes;
            for (auto changes = random() % 6; changes < 6; ++changes)
                changed[random() % (random() % 2 ? 44 : changed.size())] = static_cast<char>(random());
            const auto rules = timeZoneRulesFromFile(changed);
            for (const std::int64_t time :
                 {INT64_C(-1000000000000000), INT64_C(0), INT64_C(1000000000000000)})
                EXPECT_LE(std::abs(rules ? rules->at(time).seconds : 0), TimeZoneRules::farthestOffset)
                    << round;
        }
    }
}

TEST(TimeZoneDatabase, understandsTheEnvironment) {
    const TemporaryFolder folder;
    fs::create_directories(fs::path(folder.path()) / "zones/Europe");
    const fs::path zones = fs::path(folder.path()) / "zones",
                   elsewhere = fs::path(folder.path()) / "elsewhere", link = fs::path(folder.path()) / "link";
    fs::copy(systemFolder / "Europe/Berlin", zones / "Europe/Berlin");
    fs::copy(systemFolder / "Asia/Tokyo", elsewhere);
    fs::create_symlink(zones / "Europe/Berlin", link);
    TimeZoneDatabase database(zones);
    const auto shown = [&](const std::string &text) {
        const auto zone = database.zoneOfEnvironment(text);
        return zone.rules ? zone.name + " " + std::to_string(zone.rules->at(1'785'000'000).seconds)
                          : "(none)";
    };
    for (const std::string colon : {"", ":"}) {
        EXPECT_EQ(shown(colon), "GMT 0");
        EXPECT_EQ(shown(colon + "Europe/Berlin"), "Europe/Berlin 7200");
        EXPECT_EQ(shown(colon + (zones / "Europe/Berlin").string()), "Europe/Berlin 7200");
        EXPECT_EQ(shown(colon + link.string()), "Europe/Berlin 7200");
        EXPECT_EQ(shown(colon + elsewhere.string()), elsewhere.string() + " 32400");
        EXPECT_EQ(shown(colon + "CET-1CEST,M3.5.0,M10.5.0/3"), "CET-1CEST,M3.5.0,M10.5.0/3 7200");
        for (const char *no : {"Europe/Nowhere", "/dev/zero", "/nowhere", "Europe", "../elsewhere",
                               "../zones/Europe/Berlin", "Europe//Berlin", "\xff"})
            EXPECT_EQ(shown(colon + no), "(none)") << no;
    }
    EXPECT_EQ(database.rules("../elsewhere"), nullptr);
    EXPECT_EQ(database.rules(elsewhere.string()), nullptr);
}
