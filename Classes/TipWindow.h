// The message window: a short text behind a symbol and, while something is under way, a progress indicator.
// It is run modally, has no buttons, and is ended by `setStopModalState`. For screen readers it is an alert.
//
// Threads: the main thread, except `parentFrame` and `setParentFrame`, which any thread may call.
#pragma once

#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Interface/ModalSession.h"
#include "Platform/Interface/Outlet.h"
#include "Platform/Interface/Symbol.h"
#include "Platform/Locking/Mutex.h"

#include <QDialog>
#include <QRectF>

class QLabel;
class QProgressBar;

class TipWindow : public QDialog, public NSNibAwaking, public NSCenteredWindow {
    Q_OBJECT
public:
    explicit TipWindow(QWidget *parent = nullptr);

    void awakeFromNib() override;

    /// Hides the window and ends the application's innermost modal run.
    void setStopModalState();
    /// The text is already translated; none clears the field.
    void setMsgText(const Ref<NSString> &text);
    /// Hides the progress indicator (true) or shows it.
    void setProIndicator(bool hidden);
    /// The symbol in front of the text, or none.
    void setSymbol(std::optional<Symbol> symbol);
    /// Fits the size to the text, in lines of about equal length, and centres the window over `parentFrame`.
    void center() override;

    /// The frame of the window that the tip is to be centred over, in screen coordinates.
    QRectF parentFrame() const;
    void setParentFrame(const QRectF &frame);

    /// The size that a tip is expected not to exceed with this font, in logical pixels: the width its text is
    /// wrapped to, and the height that the main view leaves free.
    static int widest(const QFont &font);
    static int highest(const QFont &font);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void wrapMessage();

    // NOLINTBEGIN(readability-identifier-naming): the names that the description of the window gives them
    QLabel *message = nullptr;
    QProgressBar *progress = nullptr;
    SymbolView *symbolView = nullptr;
    // NOLINTEND(readability-identifier-naming)
    mutable locking::Mutex frameLock_;
    QRectF _parentFrame ZK_GUARDED_BY(frameLock_);
};
