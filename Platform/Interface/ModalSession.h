// Modal runs of windows: the caller waits, only the window gets input, and timers of the modal-panel mode and
// the main queue go on. Runs nest, also of one window; stopping ends the innermost.
//
// Threads: the main thread.
#pragma once

#include <QObject>

#include <vector>

#pragma GCC visibility push(default)

class QEventLoop;
class QWidget;

/// A window that places itself: `center` is called each time before it is run modally.
class NSCenteredWindow {
public:
    virtual ~NSCenteredWindow() = default;
    virtual void center() = 0;
};

class ModalSession final : public QObject {
    Q_OBJECT
public:
    ModalSession();
    ~ModalSession() override;

    bool isRunning() const { return !runs_.empty(); }

    /// Shows the window and returns when its run was stopped. Does not hide it.
    void run(QWidget &window);
    /// Ends the innermost run; does nothing without one.
    void stop();

    /// Blocks input to every window but that of the innermost run, even while that is hidden.
    bool eventFilter(QObject *target, QEvent *event) override;

signals:
    /// A run began or ended, so that another mode of the run loop may have to be served.
    void modeChanged();

private:
    struct Run {
        QWidget *window;
        QEventLoop *loop;
    };

    std::vector<Run> runs_;
};

#pragma GCC visibility pop
