// What the menus open: the help, and the desktop's printer settings.
#include "Tests/Window/WindowTesting.h"

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QMessageBox>
#include <QSysInfo>
#include <private/qcoreapplication_p.h>

#include <filesystem>

namespace {

class MenuTest : InLanguage, public WindowTest {
protected:
    MenuTest() : InLanguage("de") {}

    /// The message that the menu's item brings up; null when it brings none.
    QMessageBox *messageOf(const char *item) {
        part<QAction>(item)->trigger();
        QMessageBox *message = nullptr;
        QtTesting::eventually([&] {
            message = window->findChild<QMessageBox *>();
            return message && message->isVisible();
        });
        return message;
    }
};

} // namespace

TEST_F(MenuTest, aboutNamesTheProgramAndWhatItRunsOn) {
    open();
    QMessageBox *const message = messageOf("aboutAction");
    ASSERT_TRUE(message);
    EXPECT_EQ(message->windowTitle(), window->windowTitle());
    EXPECT_EQ(message->text(),
              toQString(NSLocalizedStringFromTable(u"CFBundleDisplayName"_ns, nullptr, "InfoPlist")));
    for (const QString &told : {QStringLiteral(ZK_VERSION), words("Licence"), QSysInfo::prettyProductName(),
                                QSysInfo::kernelVersion(), QString::fromLatin1(qVersion())})
        EXPECT_TRUE(message->informativeText().contains(told)) << told.toStdString();
    ASSERT_EQ(message->buttons().size(), 1);
    EXPECT_EQ(message->buttons().front()->text().remove(QLatin1Char('&')), QStringLiteral("Schließen"));
    EXPECT_TRUE(message->isModal());
    message->buttons().front()->click();
    EXPECT_TRUE(QtTesting::eventually([&] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return !window->findChild<QMessageBox *>();
    })) << "closed, it is gone";
}

TEST_F(MenuTest, theReportForTheSupportGetsOnTheClipboard) {
    plug("SN0001234567", "Sample Laser Series");
    open();
    QMessageBox *const message = messageOf("copyDiagnosticsAction");
    ASSERT_TRUE(message);
    EXPECT_EQ(message->text(), words("Diagnostics Copied"));
    const QString report = QApplication::clipboard()->text();
    EXPECT_TRUE(report.contains(QStringLiteral(ZK_VERSION))) << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral("Sample Laser Series"))) << report.toStdString();
    EXPECT_FALSE(report.contains(QStringLiteral("SN0001234567"))) << report.toStdString();
}

TEST_F(MenuTest, aReportThatCannotBeMadeIsSaidAndLeavesTheClipboard) {
    const std::string folder = printers.path();
    open();
    QApplication::clipboard()->setText(QStringLiteral("kept"));
    QCoreApplicationPrivate::setApplicationFilePath(QString::fromStdString(folder + "/zkutility"));
    for (const char *program : {"", "#!/bin/sh\nexit 9\n", "#!/bin/sh\nkill -9 $$\n"}) { // at first, none
        if (*program)
            std::filesystem::permissions(printers.put("zkprinter", program), std::filesystem::perms::all);
        QMessageBox *const message = messageOf("copyDiagnosticsAction");
        ASSERT_TRUE(message);
        EXPECT_EQ(message->text(), words("Diagnostics Failed")) << program;
        EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("kept"));
        delete message;
    }
}

TEST_F(MenuTest, thePrinterSettingsAreThoseOfTheDesktop) {
    ::setenv("XDG_CURRENT_DESKTOP", "GNOME", 1);
    ::setenv("PATH", printers.path().c_str(), 1);
    open();
    EXPECT_FALSE(part<QAction>("printSettingsAction")->isEnabled()) << "where there are none";
    const auto program = printers.put("gnome-control-center", "#!/bin/sh\necho \"$@\" > \"$0.opened\"\n");
    std::filesystem::permissions(program, std::filesystem::perms::all);
    open();
    ASSERT_TRUE(part<QAction>("printSettingsAction")->isEnabled());
    part<QAction>("printSettingsAction")->trigger();
    EXPECT_TRUE(
        QtTesting::eventually([&] { return printers.get("gnome-control-center.opened") == "printers\n"; }));
}
