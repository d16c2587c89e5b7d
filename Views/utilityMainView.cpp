#include "Views/utilityMainView.h"

#include "Classes/AppDelegate.h"
#include "Classes/TipWindow.h"
#include "Classes/UtilityController.h"
#include "Manager/ConsumableReminder.h"
#include "Manager/PrinterListCollector.h"
#include "Manager/PrinterStatus.h"
#include "Manager/QueueMatching.h"
#include "Manager/RecordLookup.h"
#include "Manager/SupportedModels.h"
#include "Manager/TonerHint.h"
#include "Manager/ZKManager.h"
#include "Manager/ZKUSB.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h"
#include "Platform/Dispatch/MainQueue.h"
#include "Platform/Foundation/Localization.h"
#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSLog.h"
#include "Platform/Foundation/NSThread.h"
#include "Platform/Interface/NSApplication.h"
#include "Platform/Interface/QtText.h"

#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>

namespace {

constexpr NSInteger secondsOfAReadingTip = 3;
constexpr NSInteger secondsOfAWritingTip = 2;

QString words(const Ref<NSString> &key) {
    return toQString(NSLocalizedString(key));
}

TipWindow *theTipWindow() {
    const AppDelegate *delegate = AppDelegate::current();
    return delegate ? dynamic_cast<TipWindow *>(delegate->tipWindow()) : nullptr;
}

NSRect frameOfWindowOf(const QWidget &view) {
    const QWidget *window = view.window();
    return window && window != &view ? toNSRect(window->frameGeometry()) : NSRect();
}

Ref<NSMutableDictionary> entryAt(NSInteger row) {
    const auto entries = UtilityController::shareInstance()->printerNameArray();
    const auto index = static_cast<NSUInteger>(row);
    return row >= 0 && index < entries->count() ? as<NSMutableDictionary>(entries->objectAtIndex(index))
                                                : nullptr;
}

Ref<NSString> textOf(const Ref<NSMutableDictionary> &entry, const Ref<NSString> &key) {
    return entry ? as<NSString>(entry->objectForKey(key)) : nullptr;
}

} // namespace

void utilityMainView::awakeFromNib() {
    findOutlets();
    showWords();
    startDiscovery();
    prepareTable();
    cofirmBtn->adjustSize();
    readQueues();
}

void utilityMainView::findOutlets() {
    scanResultsView = outlet<NSTableView>(*this, "scanResultsView");
    tips = outlet<QLabel>(*this, "tips");
    tips1 = outlet<QLabel>(*this, "tips1");
    popUpBtns = outlet<QComboBox>(*this, "popUpBtns");
    errorTips = outlet<QLabel>(*this, "errorTips");
    cofirmBtn = outlet<QPushButton>(*this, "cofirmBtn");
    progress = outlet<QProgressBar>(*this, "progress");
    connect(cofirmBtn, &QPushButton::clicked, this, [this] { oncofirmButton(cofirmBtn); });
}

void utilityMainView::showWords() {
    cofirmBtn->setText(words(u"Confirm"_ns));
    errorTips->setText(words(u"Warning Message"_ns));
    tips1->setText(words(u"Consumable Reminder"_ns));
    tips->setText(words(u"Consumable Prompt Settings"_ns));
    for (const auto &choice :
         {u"Close"_ns, u"Two Percent"_ns, u"Three Percent"_ns, u"Four Percent"_ns, u"Five Percent"_ns,
          u"Six Percent"_ns, u"Seven Percent"_ns, u"Eight Percent"_ns, u"Nine Percent"_ns, u"Ten Percent"_ns})
        popUpBtns->addItem(words(choice));
}

void utilityMainView::startDiscovery() {
    const auto manager = ZKManager::shared();
    manager->setStopRepeatDiscover(false);
    manager->zk_discoverPrinter(printerListCollector(manager->printerList()));
}

void utilityMainView::prepareTable() {
    scanResultsView->setDelegate(this);
    scanResultsView->setDataSource(this);
    printerColumn = scanResultsView->tableColumnWithIdentifier(QStringLiteral("PRINTER_NAME"));
    scanResultsView->setHeading(words(u"Printer Name"_ns));
}

void utilityMainView::readQueues() {
    matchQueues(supportedModels(), UtilityController::shareInstance()->printerNameArray(),
                [this](const Ref<NSString> &name) { destName = name; });
}

NSInteger utilityMainView::numberOfRowsInTableView(NSTableView &) {
    NSThreadDetachNewThread([view = QPointer<utilityMainView>(this)] {
        dispatch::mainQueue().sync([&view] {
            if (view)
                view->_updateScanResults();
        });
    });
    return static_cast<NSInteger>(UtilityController::shareInstance()->printerNameArray()->count());
}

void utilityMainView::_updateScanResults() {
    scanResultsView->reloadData();
}

Ref<NSString> utilityMainView::tableView(NSTableView &, const NSTableColumn *column, NSInteger row) {
    const auto entry = entryAt(row);
    return column == printerColumn ? textOf(entry, u"displayName"_ns) : nullptr;
}

void utilityMainView::tableViewSelectionDidChange(NSTableView &table) {
    const NSInteger row = table.selectedRow();
    if (row == -1)
        return;
    printerName = entryAt(row);
    NSLog("****printerName:%@", printerName);
    const auto deviceUri = textOf(printerName, u"deviceUri"_ns);
    const bool usb = deviceUri && deviceUri->hasPrefix(u"usb://"_ns);
    showSettings(usb);
    if (!usb)
        return;
    if (getUsbPrinterStatus(deviceUri)) {
        getUsbPrinterToner(deviceUri);
        runTip(u"Get Printer Status"_ns, secondsOfAReadingTip, false);
    } else {
        runTip(u"Printer Status Tip"_ns, secondsOfAReadingTip, true);
    }
}

void utilityMainView::showSettings(bool usb) {
    tips->show();
    for (QWidget *setting : {static_cast<QWidget *>(tips1), static_cast<QWidget *>(cofirmBtn),
                             static_cast<QWidget *>(popUpBtns)})
        setting->setVisible(usb);
    errorTips->setVisible(!usb);
}

bool utilityMainView::getUsbPrinterStatus(const Ref<NSString> &deviceUri) {
    return readPrinterStatus(deviceUri).isNormal();
}

void utilityMainView::getUsbPrinterToner(const Ref<NSString> &deviceUri) {
    if (const auto record = recordForDeviceUri(deviceUri, ZKManager::shared()->printerList()))
        setUsbPrinter(record);
    dispatch::globalQueue().async([printer = usbPrinter(), view = QPointer<utilityMainView>(this)] {
        readTonerHint(printer, [view](const TonerHintReading &reading) {
            dispatch::mainQueue().async([view, reading] {
                if (view)
                    view->showTonerReading(reading);
            });
        });
    });
}

void utilityMainView::showTonerReading(const TonerHintReading &reading) {
    switch (reading.outcome) {
    case TonerHintReading::Outcome::nothing:
        return;
    case TonerHintReading::Outcome::threshold:
        return changeTonerValueForUI(reading.threshold);
    case TonerHintReading::Outcome::rejected:
        return runTip(u"Get Printer Toner"_ns, secondsOfAReadingTip, true);
    }
}

void utilityMainView::changeTonerValueForUI(std::int32_t value) {
    popUpBtns->setCurrentIndex(static_cast<int>(popUpIndexForThreshold(value)));
}

void utilityMainView::oncofirmButton(QWidget *) {
    const std::int64_t index = popUpBtns->currentIndex();
    dispatch::globalQueue().async([index, printer = usbPrinter(), view = QPointer<utilityMainView>(this)] {
        writeTonerHint(printer, index, [view](TonerHintWriting writing) {
            dispatch::mainQueue().async([view, writing] {
                if (view)
                    view->showTonerWriting(writing);
            });
        });
    });
}

void utilityMainView::showTonerWriting(TonerHintWriting writing) {
    if (writing == TonerHintWriting::success)
        runTip(u"Setting Success"_ns, secondsOfAWritingTip, true);
    else if (writing == TonerHintWriting::failure)
        runTip(u"Setting fail"_ns, secondsOfAWritingTip, true);
}

void utilityMainView::runTip(const Ref<NSString> &key, NSInteger seconds, bool indicatorHidden) {
    TipWindow *tipWindow = theTipWindow();
    if (!tipWindow)
        return;
    tipWindow->setParentFrame(frameOfWindowOf(*this));
    UtilityController::shareInstance()->startRefreshTimer(seconds);
    tipWindow->setMsgText(NSLocalizedString(key));
    tipWindow->setProIndicator(indicatorHidden);
    NSApplication::sharedApplication()->runModalForWindow(*tipWindow);
}
