// The main window: a background picture with one content view on it, and the main menu.
#pragma once

#include "Platform/Interface/Outlet.h"

#include <QMainWindow>
#include <QPointer>

class QLabel;
class QMenuBar;
class utilityMainView;

class MyMainWindow : public QMainWindow, public NSNibAwaking {
    Q_OBJECT
public:
    using QMainWindow::QMainWindow;

    void awakeFromNib() override;
    bool canBecomeKeyWindow() const { return true; }

    /// Makes the view the only content of the main view, on the background picture. The views it replaces
    /// lose their parent and are not deleted.
    void showView(QWidget *view);

    utilityMainView *UtilityMainView() const { return _UtilityMainView; }
    void setUtilityMainView(utilityMainView *view) { _UtilityMainView = view; }

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void connectMenu();

    // NOLINTBEGIN(readability-identifier-naming): the names that the description of the window gives them
    QWidget *mainView = nullptr;
    QLabel *mainBackgroundView = nullptr;
    QMenuBar *mainMenu = nullptr;
    // NOLINTEND(readability-identifier-naming)
    utilityMainView *_UtilityMainView = nullptr;
};
