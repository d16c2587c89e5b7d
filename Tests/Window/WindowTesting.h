// The window as a test drives it: on no screen, with virtual printers and time moved by hand.
//
//     plugLaser();
//     open();
//     addQueue("At the desk", laserUri);
//     EXPECT_EQ(choose(0), Tips{reading});
#pragma once

#include "Classes/AppDelegate.h"
#include "Classes/MainInterface.h"
#include "Classes/MyMainWindow.h"
#include "Classes/TipWindow.h"
#include "Classes/UtilityController.h"
#include "Platform/Interface/NSTableView.h"
#include "Platform/Interface/QtText.h"
#include "Tests/Manager/ManagerTesting.h"
#include "Tests/Support/QtTesting.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Views/utilityMainView.h"

#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

enum class Indicator { none, spins };

/// What was seen of the tip window for some seconds. No text stands for a modal run whose window is hidden.
struct Tip {
    std::string text; ///< a key of the catalogue
    Indicator indicator = Indicator::none;
    int seconds = 0;

    friend bool operator==(const Tip &, const Tip &) = default;
    friend void PrintTo(const Tip &tip, std::ostream *out) {
        *out << '"' << tip.text << "\" " << (tip.indicator == Indicator::spins ? "spinning " : "")
             << tip.seconds << " s";
    }
};
using Tips = std::vector<Tip>;

/// The keys of what a tip may say.
inline constexpr const char *tipKeys[] = {"Get Printer Status", "Printer Status Tip", "Get Printer Toner",
                                          "Setting Success", "Setting fail"};
inline const Tip reading = {"Get Printer Status", Indicator::spins, 3};
inline const Tip success = {"Setting Success", Indicator::none, 2};

inline constexpr const char *laserUri = sampleUri;
inline constexpr const char *l200Uri = "usb://Zelkor/L200%20Series?serial=SN0002";
inline constexpr const char *networkUri = "socket://192.0.2.10:9100";

inline QString words(std::string_view key) {
    return toQString(NSLocalizedString(textOf(key)));
}

/// A base in front of WindowTest: the language is set before the application reads it.
struct InLanguage {
    explicit InLanguage(const std::string &language) { ::setenv("LANGUAGE", language.c_str(), 1); }
};

/// For the keys of a printer that misbehaves so.
inline std::string fault(const std::string &name) {
    return R"("threshold": 7, "faults": [")" + name + "\"]";
}

class WindowTest : public testing::Test {
protected:
    WindowTest();
    ~WindowTest() override;

    /// Writes a printer's file; `more` is put among its keys.
    void plug(const std::string &serial, const std::string &product, const std::string &more = "");
    void plugLaser(const std::string &more = "") { plug("SN0001", "Sample Laser Series", more); }
    int thresholdOf(const std::string &serial) const;

    /// Makes the window from its description and shows it.
    void show();
    /// The same, and waits until its list is read.
    void open();
    /// Adds a row to the table and waits until it is there.
    void addQueue(const char *name, const char *uri);
    /// With the laser plugged in and its queue in the table.
    void openWithLaser(const std::string &more = "");

    /// Deselects, then selects the row, and says which tips that had.
    Tips choose(int row);
    Tips clickConfirm();
    /// Does what may block in modal tips, and moves time on, a second each time nothing else happens, until
    /// the last of them is over.
    Tips tipsDuring(const std::function<void()> &action);
    bool isExchanging() const;

    /// The parts of the settings that are visible, e.g. "tips errorTips".
    std::string shown() const;
    /// What the label shows; nothing when it is hidden.
    QString says(const char *label) const {
        return part<QLabel>(label)->isVisible() ? part<QLabel>(label)->text() : QString();
    }
    /// How many entries that begin like that have been logged.
    long logged(const std::string &begin);
    /// Discovery passes that found the laser.
    long passes() { return logged("serialNumber:SN0001"); }

    template <class T>
    T *part(const char *name) const {
        return outlet<T>(*interface->window, name);
    }

    const TemporaryFolder printers;
    LogLines log;
    QtTesting qt;
    NSApplication application;
    std::unique_ptr<MainInterface> interface;

    MyMainWindow *window = nullptr;
    utilityMainView *view = nullptr;
    NSTableView *table = nullptr;
    QComboBox *popUp = nullptr;
    QPushButton *confirm = nullptr;
    TipWindow *tip = nullptr;

private:
    Tip seen() const;
    void watch(Tips &tips, bool &served);

    Lines lines_;
};
