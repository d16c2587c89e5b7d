// The panel of the settings: whose they are, the level, and where that comes from. It stands beside the list,
// or above it in a narrow window.
//
// Threads: the main thread.
#pragma once

#include <QFrame>

class QBoxLayout;
class QComboBox;
class ShownSettings;
class TextLabel;

class SettingsPanel : public QFrame {
    Q_OBJECT
public:
    using QFrame::QFrame;

    /// Finds the parts of the description; to be called before anything else.
    void findOutlets();

    /// Nothing but a text that says what to do; an empty text leaves the panel empty.
    void showHint(const QString &text);
    void showSettings(const ShownSettings &settings);
    /// Nothing but what the view shows of a queue that has no settings.
    void showWarning();

    /// Whether there is nothing in the panel.
    bool isBlank() const;

    /// Beside the list everything stands in one column, above it the controls in one row.
    void setStacked(bool stacked);
    /// Where the lowest of the controls ends, within the panel, when it is as wide as that.
    int endOfControls(int width) const;

private:
    void showOwner(const ShownSettings &settings);
    void clearHeading();

    QBoxLayout *rows_ = nullptr;
    QBoxLayout *heading_ = nullptr;
    QBoxLayout *controlRow_ = nullptr;
    QWidget *controls_ = nullptr;
    QComboBox *choices_ = nullptr;
    TextLabel *hint_ = nullptr;
    TextLabel *printerTitle_ = nullptr;
    TextLabel *serialNumber_ = nullptr;
    TextLabel *ownerNote_ = nullptr;
    TextLabel *levelNote_ = nullptr;
    TextLabel *explanation_ = nullptr;
};
