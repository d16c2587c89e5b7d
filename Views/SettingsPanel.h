// The panel with the settings of a printer: which printer, the level, and where that comes from. It is beside
// the list, or above it in a narrow window.
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

    /// Finds its parts in the interface description; has to be called first.
    void findOutlets();

    /// Shows only a text that says what to do; an empty text leaves the panel empty.
    void showHint(const QString &text);
    void showSettings(const ShownSettings &settings);
    /// Shows only the view's warning, for a queue that has no settings.
    void showWarning();

    /// Whether the panel shows nothing.
    bool isBlank() const;

    /// Above the list (`stacked`) the controls are in one row, beside it everything is in one column.
    void setStacked(bool stacked);
    /// The lower edge of the lowest control, in logical pixels from the top of the panel, at that width of
    /// the panel.
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
