#include "Classes/MyMainWindow.h"

#include "Classes/Help.h"
#include "Classes/LocalizeMenu.h"
#include "Classes/WindowPlace.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Interface/Ink.h"
#include "Views/PrinterSettings.h"
#include "Views/utilityMainView.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QShortcut>

void MyMainWindow::awakeFromNib() {
    NSLog("awakeFromNib");
    mainView = outlet<QWidget>(*this, "mainView");
    mainBackgroundView = outlet<QLabel>(*this, "mainBackgroundView");
    mainMenu = outlet<QMenuBar>(*this, "mainMenu");
    setUtilityMainView(outlet<utilityMainView>(*this, "UtilityMainView"));
    connectMenu();
    localizeMenu(mainMenu);
    setPalette(readableColors(QApplication::palette()));
    showView(UtilityMainView());
}

void MyMainWindow::connectMenu() {
    const auto action = [this](const char *name) { return outlet<QAction>(*this, name); };
    action("readAgainAction")->setShortcuts({Qt::Key_F5, Qt::CTRL | Qt::Key_R});
    connect(action("readAgainAction"), &QAction::triggered, this, [this] { UtilityMainView()->readAgain(); });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this,
            [this] { UtilityMainView()->find(); });
    action("printSettingsAction")->setEnabled(PrinterSettings::exist());
    connect(action("printSettingsAction"), &QAction::triggered, this, &PrinterSettings::open);
    connect(action("quitAction"), &QAction::triggered, this, &QWidget::close);
    connect(action("copyDiagnosticsAction"), &QAction::triggered, this,
            [this] { Help::copyDiagnostics(*this); });
    connect(action("aboutAction"), &QAction::triggered, this, [this] { Help::showAbout(*this); });
}

void MyMainWindow::changeEvent(QEvent *event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        setPalette(readableColors(QApplication::palette()));
}

void MyMainWindow::closeEvent(QCloseEvent *event) {
    WindowPlace::save(*this);
    QMainWindow::closeEvent(event);
}

void MyMainWindow::showView(QWidget *view) {
    for (QWidget *subview : mainView->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        if (subview != mainBackgroundView)
            subview->setParent(nullptr);
    view->setParent(mainView);
    view->show();
}
