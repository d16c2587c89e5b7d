// The one content view: the table of printers, and the settings of the printer that is selected.
//
// What the user does is turned into the queries of Manager/, which run here or on the global queue; what they
// answer is shown here, on the main thread. The threshold ↔ pop-up table is Manager/ConsumableReminder.h.
//
// Threads: the main thread.
#pragma once

#include "Platform/Foundation/NSString.h"
#include "Platform/Interface/NSRect.h"
#include "Platform/Interface/NSTableView.h"
#include "Platform/Interface/Outlet.h"

#include <QWidget>

class NSMutableDictionary;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class ZKUSB;
struct TonerHintReading;
enum class TonerHintWriting;

class utilityMainView : public QWidget,
                        public NSNibAwaking,
                        public NSTableViewDataSource,
                        public NSTableViewDelegate {
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// Sets texts and choices, starts the discovery of printers and fills the table.
    void awakeFromNib() override;

    /// Also starts a thread that has the table reloaded, which asks again: so the table stays current for as
    /// long as it is on screen.
    NSInteger numberOfRowsInTableView(NSTableView &table) override;
    Ref<NSString> tableView(NSTableView &table, const NSTableColumn *column, NSInteger row) override;
    void tableViewSelectionDidChange(NSTableView &table) override;

    /// Whether the printer is in a normal state. Blocks for up to two seconds.
    bool getUsbPrinterStatus(const Ref<NSString> &deviceUri);
    /// Binds the attached printer of the URI, if there is one, and has the bound one asked for its threshold.
    void getUsbPrinterToner(const Ref<NSString> &deviceUri);
    /// Selects the choice that shows the threshold.
    void changeTonerValueForUI(std::int32_t value);
    /// The confirm button's action: has the chosen threshold written to the bound printer.
    void oncofirmButton(QWidget *sender);

    /// The printer bound to the selection, or to an earlier one; held as long as it is bound.
    Ref<ZKUSB> usbPrinter() const { return _usbPrinter; }
    void setUsbPrinter(const Ref<ZKUSB> &printer) { _usbPrinter = printer; }

private:
    void findOutlets();
    void showWords();
    void startDiscovery();
    void prepareTable();
    void readQueues();
    void _updateScanResults();
    void showSettings(bool usb);
    void showTonerReading(const TonerHintReading &reading);
    void showTonerWriting(TonerHintWriting writing);
    void runTip(const Ref<NSString> &key, NSInteger seconds, bool indicatorHidden);

    NSTableView *scanResultsView = nullptr;
    NSTableColumn *printerColumn = nullptr;
    QLabel *tips = nullptr;
    QLabel *tips1 = nullptr;
    QComboBox *popUpBtns = nullptr;
    QLabel *errorTips = nullptr;
    QPushButton *cofirmBtn = nullptr;
    QProgressBar *progress = nullptr;
    Ref<NSString> destName;
    Ref<NSMutableDictionary> printerName;
    [[maybe_unused]] bool isSuccessGetToner = false;
    Ref<ZKUSB> _usbPrinter;
};
