// A pop-up button: one of several choices. Screen readers name it by its label, and read the choice before
// its description.
//
// Threads: the main thread.
#pragma once

#include <QComboBox>

#pragma GCC visibility push(default)

class NSPopUpButton final : public QComboBox {
    Q_OBJECT
public:
    explicit NSPopUpButton(QWidget *parent = nullptr);
};

#pragma GCC visibility pop
