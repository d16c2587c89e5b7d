// The window from process start to its first painted table, then the end. Built twice: as ours, and as a
// plain Qt window with a table of the same size, which is the floor to compare with.
#ifdef ZK_PLAIN_WINDOW
#include <QHeaderView>
#include <QMainWindow>
#include <QStandardItemModel>
#include <QTableView>
#else
#include "Classes/MainInterface.h"
#include "Classes/MyMainWindow.h"
#include "Platform/Foundation/System/Localization.h"
#include "Platform/Interface/NSApplication.h"
#include "Platform/Interface/NSTableView.h"
#endif

#include <QApplication>
#include <QEvent>

#include <unistd.h>

namespace {

/// Ends the process once the table has been painted with rows in it.
class EndAfterPaint final : public QObject {
public:
    explicit EndAfterPaint(QTableView &table) : table_(table) { table.viewport()->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() == QEvent::Paint && table_.model()->rowCount() > 0)
            QMetaObject::invokeMethod(
                this, [] { _exit(0); }, Qt::QueuedConnection);
        return false;
    }

private:
    QTableView &table_;
};

} // namespace

int main(int argc, char **argv) {
#ifdef ZK_PLAIN_WINDOW
    const QApplication application(argc, argv);
    QMainWindow window;
    auto *table = new QTableView;
    QStandardItemModel model(5, 1);
    table->setModel(&model);
    window.setCentralWidget(table);
    window.resize(760, 460);
    const EndAfterPaint end(*table);
    window.show();
    return QApplication::exec();
#else
    NSLocalizationPrepare();
    const QApplication qtApplication(argc, argv);
    NSApplication application;
    const MainInterface interface(application);
    const EndAfterPaint end(*interface.window->findChild<NSTableView *>());
    interface.window->show();
    return application.run();
#endif
}
