// The picture behind a window: the desktop's accent colour, so faint that everything on it stays readable.
// There is none in a palette of high contrast.
//
// Threads: the main thread.
#pragma once

#include <QLabel>

#pragma GCC visibility push(default)

class BackgroundView final : public QLabel {
    Q_OBJECT
public:
    explicit BackgroundView(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

#pragma GCC visibility pop
