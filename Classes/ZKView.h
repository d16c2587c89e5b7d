// A plain white ground.
#pragma once

#include "Platform/Interface/Outlet.h"

#include <QWidget>

class ZKView : public QWidget, public NSNibAwaking {
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// Turns the view opaque white. What stands upon it keeps the desktop's colours, and brings its own
    /// ground.
    void awakeFromNib() override;
    /// A hook; does nothing.
    void viewDidApear() {}

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool isWhite_ = false;
};
