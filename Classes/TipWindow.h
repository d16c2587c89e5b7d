// The one message window: a short text with a symbol before it and, while something is under way, a progress
// indicator. Run modally; it has no buttons and is ended by `setStopModalState`. Screen readers know it as an
// alert.
//
// Threads: the main thread, except `parentFrame` and `setParentFrame`, which any thread may call.
#pragma once

#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Interface/ModalSession.h"
#include "Platform/Interface/Outlet.h"
#include "Platform/Interface/Symbol.h"

#include <QDialog>
#include <QRectF>

#include <mutex>

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
    /// Yes hides the indicator, no shows it.
    void setProIndicator(bool hidden);
    /// Tells success from failure at a glance; none for a tip that is neither.
    void setSymbol(std::optional<Symbol> symbol);
    /// Places the window over `parentFrame`; its size fits its text, whose lines are about equally long.
    void center() override;

    /// The frame of the window that the tip is to be centred over, in screen coordinates.
    QRectF parentFrame() const;
    void setParentFrame(const QRectF &frame);

    /// How wide and high a tip is at most with these letters, whatever it says; logical pixels.
    static int widest(const QFont &font);
    static int highest(const QFont &font);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void wrapMessage();

    QLabel *message = nullptr;
    QProgressBar *progress = nullptr;
    SymbolView *symbolView = nullptr;
    mutable std::mutex frameLock_;
    QRectF _parentFrame;
};
