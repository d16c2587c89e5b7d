// A view whose subviews fill it, one upon the other, whenever they were added.
#pragma once

#include <QWidget>

class FillingView final : public QWidget {
    Q_OBJECT
public:
    explicit FillingView(QWidget *parent = nullptr);

protected:
    void childEvent(QChildEvent *event) override;
};
