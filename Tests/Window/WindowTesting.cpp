#include "Tests/Window/WindowTesting.h"

#include "Manager/ZKManager.h"
#include "Other/SafeMutableArray/ZKSafeMutableArray.h" // IWYU pragma: keep: it is the complete type

#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

WindowTest::WindowTest() {
    ::setenv("ZKCOMTL_PRINTERS", printers.path().c_str(), 1);
    ::setenv("CUPS_SERVER", printers.file("no-server").c_str(), 1);
    ::setenv("HOME", printers.path().c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", printers.path().c_str(), 1);
}

WindowTest::~WindowTest() = default;

void WindowTest::plug(const std::string &serial, const std::string &product, const std::string &more) {
    printers.put(serial + ".json", R"({"manufacturer": "Zelkor", "product": ")" + product +
                                       R"(", "serial": ")" + serial + R"(", "vid": "0x5A4B", "pid": 1)" +
                                       (more.empty() ? "" : ", " + more) + "}");
}

int WindowTest::thresholdOf(const std::string &serial) const {
    const auto file = QJsonDocument::fromJson(QByteArray::fromStdString(printers.get(serial + ".json")));
    return file.object().value(QLatin1String("threshold")).toInt(-1);
}

void WindowTest::show() {
    interface = std::make_unique<MainInterface>(application);
    window = interface->window.get();
    view = window->UtilityMainView();
    table = part<NSTableView>("scanResultsView");
    popUp = part<QComboBox>("popUpBtns");
    confirm = part<QPushButton>("cofirmBtn");
    tip = part<TipWindow>("tipWindow");
    window->show();
}

void WindowTest::open() {
    show();
    EXPECT_TRUE(QtTesting::eventually([&] {
        const auto entries = UtilityController::shareInstance()->printerNameArray()->count();
        return view->areQueuesRead() && table->model()->rowCount() == static_cast<int>(entries);
    }));
}

void WindowTest::addQueue(const char *name, const char *uri) {
    const int rows = table->model()->rowCount();
    part<QWidget>("remedy")->hide(); // the list is empty no more
    UtilityController::shareInstance()->printerNameArray()->addObject(queueEntry(name, uri));
    EXPECT_TRUE(QtTesting::eventually([&] {
        qt.advance(NSTableView::reloadPace);
        return table->model()->rowCount() == rows + 1;
    }));
    QtTesting::settle(); // what fell due with the last advance happens now, not in what the test looks at
}

void WindowTest::openWithLaser(const std::string &more) {
    plugLaser(more);
    open();
    addQueue("Laser", laserUri);
}

Tips WindowTest::choose(int row) {
    table->clearSelection();
    QtTesting::settle();
    return tipsDuring([&] { table->selectRow(row); });
}

Tips WindowTest::clickConfirm() {
    return tipsDuring([&] { confirm->click(); });
}

Tips WindowTest::tipsDuring(const std::function<void()> &action) {
    Tips tips;
    bool served = true;
    QTimer watcher;
    QObject::connect(&watcher, &QTimer::timeout, [&] { watch(tips, served); });
    watcher.start(0);
    action();
    EXPECT_TRUE(QtTesting::eventually([&] {
        return !isExchanging() && !dispatch::mainQueue().hasWork() && !application.isRunningModal();
    }));
    return tips;
}

void WindowTest::watch(Tips &tips, bool &served) {
    if (!application.isRunningModal() || !served)
        return;
    const Tip now = seen();
    if (tips.empty() || tips.back().text != now.text || tips.back().indicator != now.indicator) {
        tips.push_back(now);
    } else if (!isExchanging() && !dispatch::mainQueue().hasWork()) { // its answer may show the next tip
        ++tips.back().seconds;
        served = false;
        dispatch::mainQueue().async([&served] { served = true; }); // served together with what falls due
        qt.advance(1s);
    }
}

Tip WindowTest::seen() const {
    if (!tip->isVisible())
        return {};
    const QString text = part<QLabel>("message")->text();
    const auto *key = std::ranges::find(tipKeys, text, words);
    return {key == std::end(tipKeys) ? text.toStdString() : *key,
            part<QProgressBar>("tipProgress")->isVisible() ? Indicator::spins : Indicator::none};
}

// Every exchange under way holds its printer, as do the view and the list.
bool WindowTest::isExchanging() const {
    const auto printer = view->usbPrinter();
    return printer && printer.use_count() > 2 + ZKManager::shared()->printerList()->containsObject(printer);
}

std::string WindowTest::shown() const {
    std::string names;
    for (const char *name : {"tips", "tips1", "popUpBtns", "cofirmBtn", "errorTips", "progress"})
        if (part<QWidget>(name)->isVisible())
            names += (names.empty() ? "" : " ") + std::string(name);
    return names;
}

long WindowTest::logged(const std::string &begin) {
    for (std::string &line : log.take())
        lines_.push_back(std::move(line));
    return std::count_if(lines_.begin(), lines_.end(),
                         [&](const std::string &line) { return line.starts_with(begin); });
}
