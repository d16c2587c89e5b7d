// Modal runs of windows: the caller waits, the window gets the input, timers of the modal-panel mode and the
// main queue go on. Runs nest, also of one window; stopping ends the innermost.
//
// Threads: the main thread.
#pragma once

#include <QObject>

#include <vector>

class QEventLoop;
class QWidget;

/// A window that knows its place: it is centred each time before it is run modally.
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

    /// Shows the window and returns when its run was stopped.
    void run(QWidget &window);
    /// Ends the innermost run; nothing when there is none.
    void stop();

    /// Keeps input from every window that the innermost run is not of, shown or not.
    bool eventFilter(QObject *target, QEvent *event) override;

signals:
    /// Another mode of the run loop is to be served.
    void modeChanged();

private:
    struct Run {
        QWidget *window;
        QEventLoop *loop;
    };

    std::vector<Run> runs_;
};
