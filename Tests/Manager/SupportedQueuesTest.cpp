// Queue matching against real CUPS servers. libcups remembers a server a thread, so every matching has a
// thread of its own.
#include "Manager/SupportedQueues.h"

#include "Manager/PrintService.h"
#include "Manager/SupportedPrinterModels.h"
#include "Platform/Dispatch/Time/ManualClock.h"
#include "Tests/Manager/ManagerTesting.h"
#include "Tests/Support/ListeningSocket.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/PrivateCups.h"

namespace {

using Outcome = SupportedQueues::Outcome;

struct Matched {
    SupportedQueues outcome;
    Lines entries; ///< "displayName | hideName | deviceUri"
    Lines seen;
    Lines log;
};

std::string shown(const id &entry) {
    const auto table = as<NSMutableDictionary>(entry);
    if (!table)
        return "no mutable dictionary";
    const auto text = [&](const Ref<NSString> &key) { return utf8(as<NSString>(table->objectForKey(key))); };
    return text(u"displayName"_ns) + " | " + text(u"hideName"_ns) + " | " + text(u"deviceUri"_ns);
}

Matched matched(const Ref<NSArray> &models) {
    Matched all;
    LogLines log;
    std::thread([&] {
        const auto entries = NSMutableArray::array();
        entries->addObject(NSMutableDictionary::dictionary()); // entries are appended
        all.outcome =
            matchQueues(models, entries, [&](const Ref<NSString> &name) { all.seen.push_back(utf8(name)); });
        for (const id &entry : entries->allObjects())
            all.entries.push_back(shown(entry));
    }).join();
    EXPECT_EQ(all.entries.front(), "none | none | none");
    all.entries.erase(all.entries.begin());
    all.log = log.take();
    return all;
}

id model(const Ref<NSString> &text) {
    return dictionaryOf({{u"ppdModel"_ns, text}, {u"other"_ns, u"ignored"_ns}});
}

void expectNone(const Matched &none, Outcome why, const std::string &server, const char *what) {
    EXPECT_EQ(none.outcome.outcome, why) << what;
    EXPECT_EQ(none.outcome.destinations, 0) << what;
    EXPECT_EQ(none.outcome.server, server) << what;
    EXPECT_EQ(none.seen, Lines{}) << what;
    EXPECT_EQ(none.log, Lines{"****numOfDests:0"}) << what;
}

const Lines usualQueues = {"Bürodrucker",    "Other_Maker",  "Zelkor_L200",
                           "Zelkor_Network", "Zelkor_Plain", "Zelkor_Sample_Laser"};
const std::string office = "Büro — 打印机 | Bürodrucker | usb://Zelkor/L500%20Series?serial=SN0005";
const std::string hall = "L200 in the hall | Zelkor_L200 | usb://Zelkor/L200%20Series?serial=SN0002";
const std::string floor3 = "Third floor | Zelkor_Network | socket://192.0.2.10:9100";
const std::string plain = " | Zelkor_Plain | usb://Zelkor/L200%20Series?serial=SN0404";
const std::string desk =
    "Sample Laser at the desk | Zelkor_Sample_Laser | usb://Zelkor/Sample%20Laser%20Series?serial=SN0001";

/// Serves this process, through its environment, one connection after the other by a script.
class ScriptedService : NoCopies {
public:
    /// Gets the connections, the first is number 0.
    using Script = std::function<void(int connection, int number)>;

    explicit ScriptedService(Script script) : script_(std::move(script)) {
        ::setenv("CUPS_SERVER", path().c_str(), 1);
        server_ = std::thread([this] { serve(); });
    }
    ~ScriptedService() {
        ::shutdown(listener_.number, SHUT_RDWR);
        server_.join();
    }

    const std::string &path() const { return listener_.path; }

private:
    void serve() {
        for (int number = 0, connection; (connection = ::accept(listener_.number, nullptr, nullptr)) >= 0;
             ++number) {
            script_(connection, number);
            close(connection);
        }
    }

    const ListeningSocket listener_{testing::TempDir() + "service." + std::to_string(::getpid())};
    const Script script_;
    std::thread server_;
};

bool send(int connection, const std::string &bytes) {
    return ::send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
}

/// Until the other side closes.
void swallow(int connection) {
    std::array<char, 4096> part;
    while (recv(connection, part.data(), part.size(), 0) > 0) {
    }
}

} // namespace

TEST(SupportedQueues, listsTheQueuesOfSupportedModels) {
    PrivateCups server(true);
    const Matched shipped = matched(supportedModels());
    EXPECT_EQ(shipped.outcome.outcome, Outcome::matching);
    EXPECT_EQ(shipped.outcome.service.find("CUPS/"), 0u);
    EXPECT_EQ(shipped.outcome.destinations, 6);
    EXPECT_EQ(shipped.seen, usualQueues);
    EXPECT_EQ(shipped.entries, (Lines{office, hall, floor3, plain, desk}));
    EXPECT_EQ(shipped.log,
              (Lines{"****numOfDests:6", "printerDriverName:Büro — 打印机",
                     "Zelkor L500 Series *** Zelkor L500 Series;***printerDriverName:Büro — 打印机",
                     "printerDriverName:Ink printer", "printerDriverName:L200 in the hall",
                     "Zelkor L200 Series *** Zelkor L200 Series;***printerDriverName:L200 in the hall",
                     "printerDriverName:Third floor",
                     "Zelkor L200 Series *** Zelkor L200 Series;***printerDriverName:Third floor",
                     "printerDriverName:", "Zelkor L200 Series *** Zelkor L200 Series;***printerDriverName:",
                     "printerDriverName:Sample Laser at the desk",
                     "Zelkor Sample Laser Series *** Zelkor Sample Laser Series;***printerDriverName:Sample "
                     "Laser at the desk"}));

    const id l200 = model(u"Zelkor L200 Series"_ns), ink = model(u"Fabrikat Ink 1000"_ns);
    const struct {
        const char *name;
        Ref<NSArray> models;
        Lines entries;
    } rows[] = {
        {"a model twice",
         arrayOf({l200, ink, l200}),
         {"Ink printer | Other_Maker | usb://Fabrikat/Ink%201000?serial=F1", hall, hall, floor3, floor3,
          plain, plain}},
        {"nothing like it",
         arrayOf({model(u"zelkor l200 series"_ns), model(u"Zelkor L200"_ns), model(u""_ns)}),
         {}},
        {"entries of other kinds",
         arrayOf({NSNull::null(), u"Zelkor L200 Series"_ns, NSDictionary::dictionary(),
                  dictionaryOf({{u"ppdModel"_ns, NSNull::null()}}),
                  dictionaryOf({{u"PPDModel"_ns, u"Zelkor L200 Series"_ns}}),
                  model(u"Zelkor Sample Laser Series"_ns)}),
         {desk}},
        {"none", nullptr, {}},
    };
    for (const auto &[name, models, entries] : rows) {
        const Matched found = matched(models);
        EXPECT_EQ(found.entries, entries) << name;
        EXPECT_EQ(found.outcome.outcome, !models           ? Outcome::noModels
                                         : entries.empty() ? Outcome::noneSupported
                                                           : Outcome::matching)
            << name;
        EXPECT_EQ(found.seen, usualQueues) << name;
        EXPECT_EQ(found.log.size(), 1 + 6 + entries.size()) << name;
    }
}

TEST(SupportedQueues, tellsAnEmptyServerFromNone) {
    PrivateCups server(false);
    expectNone(matched(supportedModels()), Outcome::noQueues, server.socket(), "empty");

    // A name in ASCII alone can equal one; the same model with an umlaut is another.
    server.addQueue("Umlaut usb://Zelkor/L200%20Series?serial=U 'Zelkor L200 Sériés' Umlaut");
    server.addQueue("Same usb://Zelkor/L200%20Series?serial=S 'Zelkor L200 Series' Same");
    const Matched two = matched(arrayOf({model(u"Zelkor L200 Sériés"_ns), model(u"Zelkor L200 Series"_ns)}));
    EXPECT_EQ(two.outcome.destinations, 2);
    EXPECT_EQ(two.entries, Lines{"Same | Same | usb://Zelkor/L200%20Series?serial=S"});

    server.stop();
    expectNone(matched(supportedModels()), Outcome::noPrintService, server.socket(), "gone");
}

// Each of them would keep the caller for good, and all but the last are left by the other thread, too.
TEST(SupportedQueues, givesUpWhoeverNeverFinishesAnswering) {
    dispatch::ManualClock clock;
    const dispatch::ClockScope scope(clock);
    const std::string answer = "HTTP/1.1 200 OK\r\nServer: Mute/1.0\r\n";
    const std::pair<const char *, ScriptedService::Script> rows[] = {
        {"silent",
         [&](int connection, int) {
             clock.advance(printServicePatience);
             swallow(connection);
         }},
        {"a byte now and then",
         [&](int connection, int) {
             send(connection, answer);
             clock.advance(printServicePatience);
             while (send(connection, "X")) {
             }
         }},
        {"never at an end",
         [&](int connection, int) {
             send(connection, answer + "Transfer-Encoding: chunked\r\n\r\n");
             while (send(connection, "1000\r\n" + std::string(0x1000, 'x') + "\r\n")) {
             }
         }},
        {"silent after a sign of life",
         [&](int connection, int number) {
             if (number == 0)
                 send(connection, answer + "Content-Length: 0\r\n\r\n");
             else
                 clock.advance(printServicePatience);
         }},
    };
    for (const auto &[name, script] : rows) {
        const ScriptedService service(script);
        expectNone(matched(supportedModels()), Outcome::noPrintService, service.path(), name);
    }
}
