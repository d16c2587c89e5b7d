// A pop-up: one of several choices. Screen readers know it by its label, and say what is chosen before its
// description.
//
// Threads: the main thread.
#pragma once

#include <QComboBox>

class NSPopUpButton final : public QComboBox {
    Q_OBJECT
public:
    explicit NSPopUpButton(QWidget *parent = nullptr);
};
