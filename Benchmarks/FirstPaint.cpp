// Ends the program it is linked into at its first paint, so that its run as a process is its start.
//
//     first_paint             ends when a table has been painted for the first time
//     first_paint --rows      ends when it has been painted with rows in it
//     first_paint --stay      never ends: what a window costs that is left alone. Each byte of its standard
//     input is
//                             answered with a line: the voluntary context switches of all its threads so far
#include <QCoreApplication>
#include <QEvent>
#include <QTableView>

#include <cstdio>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

namespace {

class EndAfterPaint final : public QObject {
public:
    explicit EndAfterPaint(int rows) : rows_(rows) {}

    bool eventFilter(QObject *target, QEvent *event) override {
        if (event->type() == QEvent::Paint && isWanted(qobject_cast<const QTableView *>(target->parent())))
            // After the paint, once it is shown as well.
            QMetaObject::invokeMethod(
                this, [] { _exit(0); }, Qt::QueuedConnection);
        return false;
    }

private:
    bool isWanted(const QTableView *table) const { return table && table->model()->rowCount() >= rows_; }

    const int rows_;
};

void answerWithSwitches() {
    for (char request; read(STDIN_FILENO, &request, 1) == 1;) {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage); // of threads that have ended, too
        std::printf("%ld\n", usage.ru_nvcsw);
        std::fflush(stdout);
    }
}

void watch() {
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.contains(QStringLiteral("--stay")))
        return std::thread(answerWithSwitches).detach();
    static EndAfterPaint end(arguments.contains(QStringLiteral("--rows")) ? 1 : 0);
    qApp->installEventFilter(&end);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watch)
