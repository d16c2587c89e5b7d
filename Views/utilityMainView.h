// The one content view: the table of printers, and the settings of the printer that is selected.
//
// Turns what the user does into the queries of Manager/, and shows their answers. The status of a printer is
// read on the main thread, everything else that waits runs on the global queue. Manager/ConsumableReminder.h
// has the table of thresholds and pop-up items; Manager/ShownSettings.h keeps whose settings are shown.
//
// The print service is asked once the window has been painted, as it may take long to answer.
//
// Threads: the main thread.
#pragma once

#include "Manager/QueueNames.h"
#include "Manager/ShownSettings.h"
#include "Manager/WindowQueues.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Interface/NSTableView.h"
#include "Platform/Interface/Outlet.h"

#include <QSet>
#include <QWidget>

#include <optional>
#include <vector>

class NSMutableDictionary;
class QBoxLayout;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class SettingsPanel;
class TextLabel;
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

    /// Sets texts and choices, and starts the discovery of printers.
    void awakeFromNib() override;

    /// Also starts a thread that has the table reloaded, which calls this again: so the table stays current
    /// while it is on screen. The first call has the print service asked.
    NSInteger numberOfRowsInTableView(NSTableView &table) override;
    Ref<NSString> tableView(NSTableView &table, const NSTableColumn *column, NSInteger row) override;
    NSTableRow lookOfRow(NSTableView &table, NSInteger row) override;
    bool isTypeSelectMatch(NSTableView &table, NSInteger row, const Ref<NSString> &typed) override;
    void tableViewSelectionDidChange(NSTableView &table) override;

    /// Whether the printer is in a normal state. Asks the printer, and blocks for up to two
    /// seconds, longer if the printer is slow to open.
    bool getUsbPrinterStatus(const Ref<NSString> &deviceUri);
    /// Binds the attached printer of the URI, if there is one, and starts reading the bound printer's
    /// threshold.
    void getUsbPrinterToner(const Ref<NSString> &deviceUri);
    /// Selects the choice that shows the threshold.
    void changeTonerValueForUI(std::int32_t value);
    /// The confirm button's action: starts writing the chosen threshold to the bound printer; nothing without
    /// one.
    void oncofirmButton(QWidget *sender);

    /// Reads the selected printer again, or asks the print service again when it did not answer.
    void readAgain();
    /// Moves the focus to the search field; does nothing with a short list, which has none.
    void find();
    /// Whether asking the print service is over, with or without an answer.
    bool areQueuesRead() const { return queues_.has_value(); }

    /// The printer bound to the selection, or to an earlier one; none at first.
    Ref<ZKUSB> usbPrinter() const { return _usbPrinter; }
    void setUsbPrinter(const Ref<ZKUSB> &printer) { _usbPrinter = printer; }

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *target, QEvent *event) override;

private:
    void findOutlets();
    void connectControls();
    void showWords();
    void startDiscovery();
    void prepareTable();
    void readQueues();
    void showQueues(const WindowQueues &list);
    void showListState();
    void narrow(const QString &text);
    void takeRemedy();
    const QueueName &nameAt(NSInteger row);
    void arrange();
    void showOwner(const Ref<NSString> &deviceUri, bool isReady);
    void showSettingsNote();
    void endTonerReading(int number);
    void _updateScanResults();
    void showSettings(bool usb);
    void showTonerReading(const transport::PrinterIdentity &printer, const TonerHintReading &reading);
    void showTonerWriting(const transport::PrinterIdentity &printer, std::int64_t index,
                          TonerHintWriting writing);
    void runTip(const Ref<NSString> &key, NSInteger seconds, bool indicatorHidden,
                std::optional<Symbol> symbol = std::nullopt);

    // NOLINTBEGIN(readability-identifier-naming): the names that the description of the window gives them
    NSTableView *scanResultsView = nullptr;
    NSTableColumn *printerColumn = nullptr;
    QBoxLayout *columns = nullptr;
    SettingsPanel *panel = nullptr;
    QLineEdit *search = nullptr;
    QPushButton *remedy = nullptr;
    QLabel *tips = nullptr;
    QLabel *tips1 = nullptr;
    QComboBox *popUpBtns = nullptr;
    QLabel *errorTips = nullptr;
    QPushButton *cofirmBtn = nullptr;
    QProgressBar *progress = nullptr;
    Ref<NSString> destName;
    Ref<NSMutableDictionary> printerName;
    [[maybe_unused]] bool isSuccessGetToner = false;
    // NOLINTEND(readability-identifier-naming)
    Ref<ZKUSB> _usbPrinter;
    ShownSettings settings_;
    QSet<QString> notReady_; // URIs of the queues whose printers were not in a normal state when last asked
    std::optional<WindowQueues::State> queues_; // none while the print service is being asked
    bool isAskingForQueues_ = false;
    std::vector<QueueName> names_;
};
