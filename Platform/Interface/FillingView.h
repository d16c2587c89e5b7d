// A view whose subviews all fill it, one on top of the other.
//
// Threads: the main thread.
#pragma once

#include <QWidget>

#pragma GCC visibility push(default)

class FillingView final : public QWidget {
    Q_OBJECT
public:
    explicit FillingView(QWidget *parent = nullptr);

protected:
    void childEvent(QChildEvent *event) override;
};

#pragma GCC visibility pop
