// A view with a plain white background.
#pragma once

#include "Platform/Interface/Outlet.h"

#include <QWidget>

class ZKView : public QWidget, public NSNibAwaking {
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// Turns the view opaque white. Views on it keep the desktop's colours and have to paint their own
    /// background.
    void awakeFromNib() override;
    /// A hook; does nothing.
    void viewDidApear() {}

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool isWhite_ = false;
};
