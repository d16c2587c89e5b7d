#include "Views/utilityMainView.h"

#include "Classes/AppDelegate.h"
#include "Classes/TipWindow.h"
#include "Classes/UtilityController.h"
#include "Frameworks/QNCategoriesPro/UIKit/QAbstractButton/QAbstractButton+Blocks.h"
#include "Frameworks/QNCategoriesPro/UIKit/QWidget/QWidget+Ancestry.h"
#include "Manager/ConsumableReminder.h"
#include "Manager/PrinterListCollector.h"
#include "Manager/PrinterStatus.h"
#include "Manager/QueueConnection.h"
#include "Manager/SelectedPrinterLookup.h"
#include "Manager/TonerHint.h"
#include "Manager/ZKManager.h"
#include "Manager/ZKUSB.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h" // IWYU pragma: keep: it is the complete type
#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Foundation/System/NSThread.h"
#include "Platform/Interface/Ink.h"
#include "Platform/Interface/NSApplication.h"
#include "Views/PrinterSettings.h"
#include "Views/SettingsPanel.h"
#include "Views/Words.h"

#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>

namespace {

constexpr NSInteger secondsOfAReadingTip = 3;
constexpr NSInteger secondsOfAWritingTip = 2;

/// A longer list gets a search field.
constexpr int shortList = 12;

/// Shows the busy pointer as long as it lives.
class BusyPointer {
public:
    BusyPointer() { QApplication::setOverrideCursor(Qt::BusyCursor); }
    BusyPointer(const BusyPointer &) = delete;
    BusyPointer &operator=(const BusyPointer &) = delete;
    ~BusyPointer() { QApplication::restoreOverrideCursor(); }
};

/// False when there is no thread to do it.
bool doBeside(dispatch::Block work) {
    try {
        dispatch::globalQueue().async(std::move(work));
        return true;
    } catch (const NSException &exception) {
        NSLog("%s", exception.what());
        return false;
    }
}

TipWindow *theTipWindow() {
    const AppDelegate *delegate = AppDelegate::current();
    return delegate ? dynamic_cast<TipWindow *>(delegate->tipWindow()) : nullptr;
}

QRectF frameOfWindowOf(const QWidget &view) {
    const QWidget *window = qn::owningWindow(view);
    return window ? window->frameGeometry() : QRectF();
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
    connectControls();
    arrange();
    // The print service is asked when the table asks for its rows, which is when it is painted.
    showListState();
}

void utilityMainView::findOutlets() {
    columns = outlet<QBoxLayout>(*this, "columns");
    panel = outlet<SettingsPanel>(*this, "panel");
    panel->findOutlets();
    search = outlet<QLineEdit>(*this, "search");
    remedy = outlet<QPushButton>(*this, "remedy");
    scanResultsView = outlet<NSTableView>(*this, "scanResultsView");
    tips = outlet<QLabel>(*this, "tips");
    tips1 = outlet<QLabel>(*this, "tips1");
    popUpBtns = outlet<QComboBox>(*this, "popUpBtns");
    errorTips = outlet<QLabel>(*this, "errorTips");
    cofirmBtn = outlet<QPushButton>(*this, "cofirmBtn");
    progress = outlet<QProgressBar>(*this, "progress");
}

void utilityMainView::connectControls() {
    qn::onClick(*cofirmBtn, [this] {
        // A row that was selected a moment ago is bound first: nothing is written to the printer of another
        // row.
        if (!scanResultsView->tellWaitingSelection())
            oncofirmButton(cofirmBtn);
    });
    connect(popUpBtns, &QComboBox::currentIndexChanged, this, [this] {
        settings_.levelWasChosen();
        showSettingsNote();
    });
    qn::onClick(*remedy, [this] { takeRemedy(); });
    connect(search, &QLineEdit::textChanged, this, [this](const QString &text) { narrow(text); });
    search->installEventFilter(this);
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
    queues_.reset();
    showListState();
    isAskingForQueues_ = doBeside([view = QPointer<utilityMainView>(this)] {
        dispatch::mainQueue().async([view, list = readWindowQueues()] {
            if (view)
                view->showQueues(list);
        });
    });
}

void utilityMainView::showQueues(const WindowQueues &list) {
    destName = list.latestDestName;
    UtilityController::shareInstance()->printerNameArray()->addObjectsFromArray(list.entries);
    queues_ = list.state;
    showListState();
    scanResultsView->reloadAtOnce();
}

void utilityMainView::showListState() {
    const auto rows = UtilityController::shareInstance()->printerNameArray()->count();
    QString text = search->text().isEmpty() ? QString() : words(u"No Match"_ns), way;
    if (!queues_) {
        text = words(u"Looking For Printers"_ns);
    } else if (rows == 0) {
        switch (*queues_) {
        case WindowQueues::State::found:
        case WindowQueues::State::noneSupported:
            text = words(u"No Printers"_ns);
            way = PrinterSettings::exist() ? words(u"Print Settings"_ns) : QString();
            break;
        case WindowQueues::State::silent:
            text = words(u"No Print Service"_ns);
            way = words(u"Read Again"_ns);
            break;
        case WindowQueues::State::damaged:
            text = words(u"Damaged Installation"_ns);
            break;
        }
    }
    scanResultsView->setPlaceholderText(text);
    scanResultsView->setAccessibleDescription(rows == 0 ? text : words(u"Printer List Description"_ns));
    remedy->setText(way);
    remedy->setVisible(!way.isEmpty());
    const bool isLong = rows > shortList;
    search->setVisible(isLong);
    if (isLong)
        search->setClearButtonEnabled(
            true); // late, as looking for the button's picture in all icon themes takes long
    if (!printerName)
        panel->showHint(rows == 0 ? QString() : words(u"Printer List Description"_ns));
    arrange();
}

void utilityMainView::takeRemedy() {
    if (queues_ == WindowQueues::State::silent)
        readQueues();
    else
        PrinterSettings::open();
}

void utilityMainView::readAgain() {
    if (queues_ == WindowQueues::State::silent)
        readQueues();
    else
        scanResultsView->selectAgain();
}

void utilityMainView::find() {
    if (!search->isVisible())
        return;
    search->setFocus(Qt::ShortcutFocusReason);
    search->selectAll();
}

void utilityMainView::narrow(const QString &text) {
    const QString wanted = text.simplified();
    if (wanted.isEmpty())
        scanResultsView->setFilter(nullptr);
    else
        scanResultsView->setFilter(
            [this, typed = toNSString(wanted)](int row) { return nameAt(row).isFoundBy(typed); });
    showListState();
}

bool utilityMainView::eventFilter(QObject *target, QEvent *event) {
    if (target != search || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(target, event);
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Escape:
        search->clear();
        scanResultsView->setFocus();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        scanResultsView->setFocus();
        if (scanResultsView->selectedRow() == -1 && scanResultsView->firstShownRow() >= 0)
            scanResultsView->selectRow(scanResultsView->firstShownRow());
        return true;
    default:
        return false;
    }
}

NSInteger utilityMainView::numberOfRowsInTableView(NSTableView &) {
    if (!std::exchange(isAskingForQueues_, true))
        dispatch::mainQueue().async([view = QPointer<utilityMainView>(this)] {
            if (view)
                view->readQueues();
        });
    const auto reload = [view = QPointer<utilityMainView>(this)] {
        if (view)
            view->_updateScanResults();
    };
    try {
        NSThreadDetachNewThread([reload] { dispatch::mainQueue().sync(reload); });
    } catch (const NSException &) { // no thread is left
        dispatch::mainQueue().async(reload);
    }
    return static_cast<NSInteger>(UtilityController::shareInstance()->printerNameArray()->count());
}

void utilityMainView::_updateScanResults() {
    scanResultsView->reloadData();
}

Ref<NSString> utilityMainView::tableView(NSTableView &, const NSTableColumn *column, NSInteger row) {
    const auto entry = entryAt(row);
    return column == printerColumn ? textOf(entry, u"displayName"_ns) : nullptr;
}

const QueueName &utilityMainView::nameAt(NSInteger row) {
    const auto entries = UtilityController::shareInstance()->printerNameArray();
    if (names_.size() != entries->count())
        names_ = queueNames(*entries);
    static const QueueName none = {NSString::string(), NSString::string()};
    const auto index = static_cast<std::size_t>(row);
    return index < names_.size() ? names_[index] : none;
}

bool utilityMainView::isTypeSelectMatch(NSTableView &, NSInteger row, const Ref<NSString> &typed) {
    return nameAt(row).beginsWith(typed);
}

NSTableRow utilityMainView::lookOfRow(NSTableView &, NSInteger row) {
    NSTableRow look;
    const auto deviceUri = textOf(entryAt(row), u"deviceUri"_ns);
    switch (connectionOf(deviceUri, *ZKManager::shared()->printerList())) {
    case QueueConnection::network:
        look.symbol = Symbol::networkPrinter;
        look.detail = words(u"Network"_ns);
        break;
    case QueueConnection::usbAttached: {
        const bool isReady = !notReady_.contains(toQString(deviceUri));
        look.symbol = isReady ? Symbol::printer : Symbol::failingPrinter;
        look.detail = words(isReady ? u"USB, Attached"_ns : u"USB, Not Ready"_ns);
        break;
    }
    case QueueConnection::usbNotAttached:
        notReady_.remove(toQString(deviceUri)); // it may have changed when it is attached again
        look.symbol = Symbol::missingPrinter;
        look.detail = words(u"USB, Not Attached"_ns);
        break;
    }
    const QueueName &name = nameAt(row);
    const QString queue = toQString(name.queue);
    look.name = toQString(name.text);
    look.isNameMuted = name.isQueueName;
    if (name.isShared && !name.isQueueName)
        look.detail = QStringLiteral("%1 · %2").arg(look.detail, isolated(queue));
    if (name.isShared || name.isQueueName)
        look.more = words(u"Queue"_ns, queue);
    return look;
}

void utilityMainView::tableViewSelectionDidChange(NSTableView &table) {
    const NSInteger row = table.selectedRow();
    if (row == -1)
        return;
    printerName = entryAt(row);
    NSLog("****printerName:%@", printerName);
    const auto deviceUri = textOf(printerName, u"deviceUri"_ns);
    const bool usb = isUsb(deviceUri);
    showSettings(usb);
    if (!usb) {
        panel->showWarning();
        return arrange();
    }
    if (getUsbPrinterStatus(deviceUri)) {
        notReady_.remove(toQString(deviceUri));
        getUsbPrinterToner(deviceUri);
        runTip(u"Get Printer Status"_ns, secondsOfAReadingTip, false);
    } else {
        notReady_.insert(toQString(deviceUri));
        showOwner(deviceUri, false);
        runTip(u"Printer Status Tip"_ns, secondsOfAReadingTip, true, Symbol::warning);
    }
}

void utilityMainView::showOwner(const Ref<NSString> &deviceUri, bool isReady) {
    const auto attached = ZKManager::shared()->printerList();
    const auto bound = usbPrinter() ? std::optional(identityOf(*usbPrinter())) : std::nullopt;
    settings_.select(deviceUri, bound, connectionOf(deviceUri, *attached) == QueueConnection::usbAttached,
                     isReady);
    showSettingsNote();
}

void utilityMainView::showSettings(bool usb) {
    tips->show();
    for (QWidget *setting : {static_cast<QWidget *>(tips1), static_cast<QWidget *>(cofirmBtn),
                             static_cast<QWidget *>(popUpBtns)})
        setting->setVisible(usb);
    errorTips->setVisible(!usb);
}

bool utilityMainView::getUsbPrinterStatus(const Ref<NSString> &deviceUri) {
    const BusyPointer busy;
    return readPrinterStatus(deviceUri).isNormal();
}

void utilityMainView::getUsbPrinterToner(const Ref<NSString> &deviceUri) {
    if (const auto record = recordForDeviceUri(deviceUri, ZKManager::shared()->printerList()))
        setUsbPrinter(record);
    showOwner(deviceUri, true);
    const int reading = settings_.beginReading();
    showSettingsNote();
    const QPointer<utilityMainView> view(this);
    const auto deliver = [view, from = settings_.owner()](const TonerHintReading &answer) {
        dispatch::mainQueue().async([view, from, answer] {
            if (view)
                view->showTonerReading(*from, answer);
        });
    };
    const auto end = [view, reading] {
        if (view)
            view->endTonerReading(reading);
    };
    const bool asks = doBeside([printer = usbPrinter(), deliver, end] {
        readTonerHint(printer, deliver);
        dispatch::mainQueue().async(end);
    });
    if (asks)
        return;
    deliver({.outcome = TonerHintReading::Outcome::rejected});
    dispatch::mainQueue().async(end);
}

void utilityMainView::showTonerReading(const transport::PrinterIdentity &printer,
                                       const TonerHintReading &reading) {
    switch (reading.outcome) {
    case TonerHintReading::Outcome::nothing:
        return;
    case TonerHintReading::Outcome::threshold:
        changeTonerValueForUI(reading.threshold);
        settings_.levelWasRead(printer);
        return showSettingsNote();
    case TonerHintReading::Outcome::rejected:
        settings_.levelWasNotRead(printer);
        showSettingsNote();
        return runTip(u"Get Printer Toner"_ns, secondsOfAReadingTip, true, Symbol::warning);
    }
}

void utilityMainView::endTonerReading(int number) {
    settings_.endReading(number);
    showSettingsNote();
}

void utilityMainView::showSettingsNote() {
    if (!popUpBtns->isHidden())
        panel->showSettings(settings_);
    arrange();
}

void utilityMainView::changeTonerValueForUI(std::int32_t value) {
    const QSignalBlocker nobodyChooses(popUpBtns);
    popUpBtns->setCurrentIndex(static_cast<int>(popUpIndexForThreshold(value)));
}

void utilityMainView::oncofirmButton(QWidget *) {
    const std::int64_t index = popUpBtns->currentIndex();
    const auto printer = usbPrinter();
    if (!printer)
        return;
    const auto deliver = [view = QPointer<utilityMainView>(this), to = identityOf(*printer),
                          index](TonerHintWriting writing) {
        dispatch::mainQueue().async([view, to, index, writing] {
            if (view)
                view->showTonerWriting(to, index, writing);
        });
    };
    if (!doBeside([printer, index, deliver] { writeTonerHint(printer, index, deliver); }))
        deliver(TonerHintWriting::failure);
}

void utilityMainView::showTonerWriting(const transport::PrinterIdentity &printer, std::int64_t index,
                                       TonerHintWriting writing) {
    if (writing == TonerHintWriting::nothing)
        return;
    const bool taken = writing == TonerHintWriting::success;
    if (index == popUpBtns->currentIndex())
        settings_.levelWasWritten(printer, taken);
    showSettingsNote();
    if (taken)
        runTip(u"Setting Success"_ns, secondsOfAWritingTip, true, Symbol::success);
    else
        runTip(u"Setting fail"_ns, secondsOfAWritingTip, true, Symbol::failure);
}

void utilityMainView::runTip(const Ref<NSString> &key, NSInteger seconds, bool indicatorHidden,
                             std::optional<Symbol> symbol) {
    TipWindow *tipWindow = theTipWindow();
    if (!tipWindow)
        return;
    tipWindow->setParentFrame(frameOfWindowOf(*this));
    UtilityController::shareInstance()->startRefreshTimer(seconds);
    tipWindow->setMsgText(NSLocalizedString(key));
    tipWindow->setProIndicator(indicatorHidden);
    tipWindow->setSymbol(symbol);
    NSApplication::sharedApplication()->runModalForWindow(*tipWindow);
}

void utilityMainView::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    arrange();
}

// The panel is beside the list if the tip, which is centred over the window, does not cover the controls
// there; otherwise it is above the list, and the tip covers rows.
void utilityMainView::arrange() {
    const QMargins edge = columns->contentsMargins();
    const int padding = measure(font(), 24);
    const int beside = (width() - TipWindow::widest(font())) / 2 - edge.right() + padding;
    const bool stacked = beside < measure(font(), 248);
    columns->setDirection(stacked ? QBoxLayout::BottomToTop : QBoxLayout::LeftToRight);
    panel->setStacked(stacked);
    auto *const place = panel->parentWidget();
    place->setVisible(!stacked || !panel->isBlank()); // above the list an empty panel would be a mere bar
    place->setMinimumWidth(stacked ? 0 : measure(font(), 248));
    place->setMaximumWidth(stacked ? QWIDGETSIZE_MAX : std::min(beside, measure(font(), 320)));
    updateGeometry();
}

// The width is that of the layout with the panel above the list, also while it is beside it: otherwise no
// window could get narrow enough to change. The height is what the texts need at the current width, with the
// tip below the controls.
QSize utilityMainView::minimumSizeHint() const {
    if (!columns)
        return QWidget::minimumSizeHint();
    const QMargins edge = columns->contentsMargins();
    const int least = std::max(scanResultsView->minimumSizeHint().width(), panel->minimumSizeHint().width());
    // A layout without wrapping text has no height for a width.
    int height = columns->hasHeightForWidth() ? columns->minimumHeightForWidth(width())
                                              : columns->minimumSize().height();
    if (columns->direction() == QBoxLayout::BottomToTop) {
        const int end = panel->endOfControls(width() - edge.left() - edge.right());
        const int menu =
            mapTo(window(), QPoint()).y(); // the tip is centred over the window, this view is not
        height = std::max(height, menu + 2 * (edge.top() + end) + TipWindow::highest(font()));
    }
    return {std::max(edge.left() + least + edge.right(), measure(font(), 480)), height};
}
