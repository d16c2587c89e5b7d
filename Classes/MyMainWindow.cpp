#include "Classes/MyMainWindow.h"

#include "Classes/LocalizeMenu.h"
#include "Platform/Foundation/NSLog.h"
#include "Views/utilityMainView.h"

#include <QAction>
#include <QLabel>
#include <QMenuBar>

void MyMainWindow::awakeFromNib() {
    NSLog("awakeFromNib");
    mainView = outlet<QWidget>(*this, "mainView");
    mainBackgroundView = outlet<QLabel>(*this, "mainBackgroundView");
    mainMenu = outlet<QMenuBar>(*this, "mainMenu");
    setUtilityMainView(outlet<utilityMainView>(*this, "UtilityMainView"));
    connect(outlet<QAction>(*this, "quitAction"), &QAction::triggered, this, &QWidget::close);
    localizeMenu(mainMenu);
    showView(UtilityMainView());
}

void MyMainWindow::showView(QWidget *view) {
    for (QWidget *subview : mainView->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        if (subview != mainBackgroundView)
            subview->setParent(nullptr);
    view->setParent(mainView);
    view->show();
}
