#include "Views/SettingsPanel.h"

#include "Manager/ShownSettings.h"
#include "Platform/Interface/Outlet.h"
#include "Platform/Interface/TextLabel.h"
#include "Views/Words.h"

#include <QBoxLayout>
#include <QComboBox>

#include <algorithm>

namespace {

using Level = ShownSettings::Level;
using Obstacle = ShownSettings::Obstacle;

QString levelWords(Level level) {
    switch (level) {
    case Level::notRead:
        return words(u"Level Not Read"_ns);
    case Level::reading:
        return words(u"Level Being Read"_ns);
    case Level::read:
        return words(u"Level Read"_ns);
    case Level::chosen:
        return words(u"Level Chosen"_ns);
    case Level::set:
        return words(u"Level Set"_ns);
    case Level::refused:
        return words(u"Level Refused"_ns);
    }
    return {};
}

QString ownerWords(Obstacle obstacle, const QString &owner) {
    switch (obstacle) {
    case Obstacle::none:
        return {};
    case Obstacle::notAttached:
        return words(u"Other Printer, Not Attached"_ns, owner);
    case Obstacle::notReady:
        return words(u"Other Printer, Not Ready"_ns, owner);
    case Obstacle::notFound:
        return words(u"Other Printer, Not Found"_ns, owner);
    }
    return {};
}

/// The obstacle where no other printer's settings are shown.
QString obstacleWords(Obstacle obstacle) {
    return obstacle == Obstacle::none
               ? QString()
               : words(obstacle == Obstacle::notReady ? u"No Printer, Not Ready"_ns
                                                      : u"No Printer, Not Attached"_ns);
}

/// The text with places to break very long words, so that a printer's texts do not widen the window.
QString breakable(const QString &text) {
    constexpr qsizetype longWord = 24;
    const QChar breakHere(0x200B);
    QString result;
    for (const QString &word : text.simplified().split(QLatin1Char(' '))) {
        result += result.isEmpty() ? QString() : QStringLiteral(" ");
        for (qsizetype i = 0; i < word.size(); ++i) {
            if (word.size() > longWord && i > 0 && !word[i].isLowSurrogate())
                result += breakHere;
            result += word[i];
        }
    }
    return result;
}

} // namespace

void SettingsPanel::findOutlets() {
    rows_ = outlet<QBoxLayout>(*this, "rows");
    heading_ = outlet<QBoxLayout>(*this, "heading");
    controlRow_ = outlet<QBoxLayout>(*this, "controlRow");
    controls_ = outlet<QWidget>(*this, "controls");
    choices_ = outlet<QComboBox>(*this, "popUpBtns");
    hint_ = outlet<TextLabel>(*this, "hint");
    printerTitle_ = outlet<TextLabel>(*this, "printerTitle");
    serialNumber_ = outlet<TextLabel>(*this, "serialNumber");
    ownerNote_ = outlet<TextLabel>(*this, "ownerNote");
    levelNote_ = outlet<TextLabel>(*this, "levelNote");
    explanation_ = outlet<TextLabel>(*this, "explanation");
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
}

void SettingsPanel::clearHeading() {
    for (TextLabel *label : {hint_, printerTitle_, serialNumber_, ownerNote_, levelNote_})
        label->showText({});
}

void SettingsPanel::showHint(const QString &text) {
    clearHeading();
    hint_->showText(text);
}

void SettingsPanel::showWarning() {
    clearHeading();
    controls_->hide();
    explanation_->hide();
}

void SettingsPanel::showSettings(const ShownSettings &settings) {
    hint_->showText({});
    showOwner(settings);
    levelNote_->showText(levelWords(settings.level()));
    controls_->show();
    explanation_->show();
    QStringList spoken{printerTitle_->text(), serialNumber_->text(), ownerNote_->text(), levelNote_->text()};
    spoken.removeAll(QString());
    choices_->setAccessibleDescription(spoken.join(QStringLiteral(" · ")));
}

void SettingsPanel::showOwner(const ShownSettings &settings) {
    const auto &owner = settings.owner();
    if (!owner) {
        printerTitle_->showText({});
        serialNumber_->showText({});
        ownerNote_->showText(obstacleWords(settings.obstacle()));
        return;
    }
    const QString product = breakable(QString::fromStdString(owner->product));
    const QString serial = breakable(QString::fromStdString(owner->serial));
    printerTitle_->showText(isolated(product));
    serialNumber_->showText(serial.isEmpty() ? QString() : words(u"Serial Number"_ns, serial));
    ownerNote_->showText(settings.isSelected() ? obstacleWords(settings.obstacle())
                                               : ownerWords(settings.obstacle(), product));
}

bool SettingsPanel::isBlank() const {
    const auto views = findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    return std::all_of(views.begin(), views.end(), [](const QWidget *view) { return view->isHidden(); });
}

void SettingsPanel::setStacked(bool stacked) {
    const auto along = stacked ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
    if (controlRow_->direction() == along)
        return;
    controlRow_->setDirection(along);
    controlRow_->setContentsMargins(0, stacked ? 0 : 16, 0, 0);
    heading_->setDirection(along);
    heading_->setSpacing(stacked ? 16 : 8);
    const int margin = stacked ? 16 : 24;
    rows_->setContentsMargins(margin, stacked ? 8 : margin, margin, stacked ? 8 : margin);
}

int SettingsPanel::endOfControls(int width) const {
    const QMargins edge = rows_->contentsMargins();
    const int room = width - edge.left() - edge.right();
    const auto heightOf = [room](const auto &line) {
        return line.hasHeightForWidth() ? line.heightForWidth(room) : line.sizeHint().height();
    };
    int end = edge.top() + heightOf(*heading_) + rows_->spacing();
    if (!ownerNote_->isHidden())
        end += heightOf(*ownerNote_) + rows_->spacing();
    return end + heightOf(*controls_);
}
