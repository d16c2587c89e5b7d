// A white background for controls, in every palette of the desktop.
#pragma once

#include "Platform/Interface/Outlet.h"

#include <QWidget>

class ZKView : public QWidget, public NSNibAwaking {
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// Turns the view opaque white and gives what stands on it the colours of a light desktop, so that it
    /// stays readable on a dark one.
    void awakeFromNib() override;
    /// A hook; does nothing.
    void viewDidApear() {}

    /// Room for every line of the texts upon it, wrapped at a width that a reader likes.
    QSize minimumSizeHint() const override;
};
