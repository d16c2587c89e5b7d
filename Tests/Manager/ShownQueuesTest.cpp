// What the window shows of queues and printers, as far as it takes no window.
#include "Manager/PrinterSettingsProgram.h"
#include "Manager/QueueConnection.h"
#include "Manager/QueueNames.h"
#include "Manager/ShownSettings.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h"
#include "Tests/Manager/ManagerTesting.h"

namespace {

id entry(std::string_view displayName, std::string_view name) {
    return queueEntry(displayName, "none", name);
}

using Level = ShownSettings::Level;
using Obstacle = ShownSettings::Obstacle;

} // namespace

TEST(ShownQueues, connectionsCompareWholePrinters) {
    const auto attached = make<ZKSafeMutableArray>();
    for (const char *serial : {"SN1", "SN2"})
        attached->addObject(recordOf("L200 Series", serial));
    const std::pair<const char *, QueueConnection> rows[] = {
        {"none", QueueConnection::network},
        {"socket://192.0.2.10:9100", QueueConnection::network},
        {"usb://Zelkor/L200%20Series?serial=SN2", QueueConnection::usbAttached},
        {"usb://Zelkor/L200%20Series?serial=SN22", QueueConnection::usbNotAttached},
        {"usb://Zelkor/L500%20Series?serial=SN2", QueueConnection::usbNotAttached},
    };
    for (const auto &[uri, connection] : rows)
        EXPECT_EQ(connectionOf(textOf(uri), *attached), connection) << uri;
}

TEST(ShownQueues, aQueueWithoutDescriptionIsCalledByItsName) {
    const auto entries = NSMutableArray::array();
    for (const id &one : {entry("Laser", "a"), entry("none", "b"), entry(" ", "c"), entry("Laser", "d")})
        entries->addObject(one);
    std::string seen;
    for (const QueueName &name : queueNames(*entries))
        seen += utf8(name.text) + "/" + utf8(name.queue) + (name.isQueueName ? " name" : "") +
                (name.isShared ? " shared" : "") + "; ";
    EXPECT_EQ(seen, "Laser/a shared; b/b name; c/c name; Laser/d shared; ");
}

TEST(ShownQueues, areFoundByWhatIsTyped) {
    const auto entries = NSMutableArray::array();
    entries->addObject(entry("三楼 Laser 打印机", "Zelkor_3F"));
    const std::vector<QueueName> names = queueNames(*entries);
    const struct {
        const char *typed;
        bool found, begun;
    } rows[] = {{"sanl", true, true},   {"三楼 l", true, true}, {"laser dyj", true, false},
                {"_3f", true, false},   {"r d", true, false},   {"yinji", true, false},
                {"lou3", false, false}, {"", false, false}};
    for (const auto &[typed, found, begun] : rows) {
        EXPECT_EQ(names[0].isFoundBy(textOf(typed)), found) << typed;
        EXPECT_EQ(names[0].beginsWith(textOf(typed)), begun) << typed;
    }
}

TEST(ShownQueues, theDesktopsOwnSettingsGoFirst) {
    const struct {
        const char *desktops;
        std::vector<std::string> installed;
        std::vector<std::string> command;
    } rows[] = {
        {"ubuntu:GNOME",
         {"system-config-printer", "gnome-control-center"},
         {"gnome-control-center", "printers"}},
        {"KDE", {"gnome-control-center", "systemsettings5"}, {"systemsettings5", "kcm_printer_manager"}},
        {"XFCE", {"gnome-control-center", "system-config-printer"}, {"system-config-printer"}},
        {"GNOMES", {"gnome-control-center"}, {}},
        {"", {}, {}},
    };
    for (const auto &[desktops, installed, command] : rows)
        EXPECT_EQ(printerSettingsCommand(desktops,
                                         [&all = installed](const auto &program) {
                                             return std::ranges::count(all, program) > 0;
                                         }),
                  command)
            << desktops;
}

TEST(ShownSettings, tellWhoseTheyAreAndWhereTheLevelComesFrom) {
    const transport::PrinterIdentity a = {"Zelkor", "L200 Series", "SN1"},
                                     b = {"Zelkor", "L200 Series", "SN11"};
    const auto uriOf = [](const auto &printer) { return textOf(transport::printerUri(printer)); };
    ShownSettings shown;
    const auto expect = [&](const std::optional<transport::PrinterIdentity> &owner, Obstacle obstacle,
                            Level level, const char *what) {
        EXPECT_EQ(shown.owner(), owner) << what;
        EXPECT_EQ(shown.obstacle(), obstacle) << what;
        EXPECT_EQ(shown.level(), level) << what;
    };
    shown.select(uriOf(a), std::nullopt, false, false);
    shown.beginReading();
    expect(std::nullopt, Obstacle::notAttached, Level::notRead, "nobody is bound");

    shown.select(uriOf(a), a, true, true);
    const int first = shown.beginReading();
    expect(a, Obstacle::none, Level::reading, "asked");
    shown.levelWasRead(a);
    shown.endReading(first);
    expect(a, Obstacle::none, Level::read, "answered");
    shown.levelWasChosen();
    shown.levelWasWritten(b, true);
    expect(a, Obstacle::none, Level::chosen, "another took it");
    shown.levelWasWritten(a, false);
    expect(a, Obstacle::none, Level::refused, "refused");
    shown.levelWasWritten(a, true);
    expect(a, Obstacle::none, Level::set, "taken");

    shown.select(uriOf(b), a, false, false);
    expect(a, Obstacle::notAttached, Level::set, "the other is away: still the settings of the first");
    shown.select(uriOf(b), a, true, false);
    expect(a, Obstacle::notReady, Level::set, "the other is not ready");
    shown.select(uriOf(b), a, true, true);
    expect(a, Obstacle::notFound, Level::set, "one serial number within the other");
    shown.select(uriOf(a), a, true, false);
    expect(a, Obstacle::notReady, Level::notRead, "not ready any more");

    shown.select(uriOf(a), a, true, true);
    const int slow = shown.beginReading();
    shown.select(uriOf(b), b, true, true);
    const int latest = shown.beginReading();
    shown.endReading(slow);
    expect(b, Obstacle::none, Level::reading, "the end of an earlier reading is none of this one");
    shown.levelWasRead(a);
    expect(b, Obstacle::none, Level::notRead, "shown is now what another printer said");
    shown.levelWasRead(b);
    shown.levelWasNotRead(a);
    expect(b, Obstacle::none, Level::read, "another did not answer");
    shown.beginReading();
    shown.endReading(latest + 1);
    expect(b, Obstacle::none, Level::notRead, "no answer");
}
