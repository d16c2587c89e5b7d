#include "Classes/ZKView.h"

#include <QPaintEvent>
#include <QPainter>

void ZKView::awakeFromNib() {
    isWhite_ = true;
    update();
}

// Not by the palette, which the views on it would inherit.
void ZKView::paintEvent(QPaintEvent *event) {
    if (isWhite_)
        QPainter(this).fillRect(event->rect(), Qt::white);
}
