// The picture behind a window: a wash of the desktop's accent, so faint that it can lie behind anything. In a
// palette of high contrast there is none.
#pragma once

#include <QLabel>

class BackgroundView final : public QLabel {
    Q_OBJECT
public:
    explicit BackgroundView(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
