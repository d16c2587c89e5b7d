#include "Frameworks/QNCategoriesPro/UIKit/QPushButton/QPushButton+Arrangement.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOptionButton>

#include <algorithm>

namespace {

/// The application's style, but for what is within push buttons.
class ArrangedStyle final : public QProxyStyle {
public:
    explicit ArrangedStyle(QPushButton &button)
        : QProxyStyle(QStyleFactory::create(QApplication::style()->name())) {
        setParent(&button);
    }

    qn::Arrangement arrangement;

    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                           const QWidget *widget) const override {
        const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
        if (type != CT_PushButton || !button)
            return QProxyStyle::sizeFromContents(type, option, contents, widget);
        QSize needed = sizeOf(imageSize(*button), titleSize(*button, button->text));
        if (button->features & QStyleOptionButton::HasMenu)
            needed.rwidth() += pixelMetric(PM_MenuButtonIndicator, option, widget);
        return QProxyStyle::sizeFromContents(type, option, needed, widget);
    }

    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override {
        const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
        if (element == CE_PushButtonLabel && button)
            drawLabel(*button, *painter, widget);
        else
            QProxyStyle::drawControl(element, option, painter, widget);
    }

private:
    static QSize imageSize(const QStyleOptionButton &button) {
        return button.icon.isNull() ? QSize(0, 0) : button.iconSize;
    }
    static QSize titleSize(const QStyleOptionButton &button, const QString &title) {
        return title.isEmpty() ? QSize(0, 0) : button.fontMetrics.size(Qt::TextShowMnemonic, title);
    }

    static QString titleWithin(int width, const QStyleOptionButton &button) {
        if (titleSize(button, button.text).width() <= width)
            return button.text;
        return button.fontMetrics.elidedText(button.text, Qt::ElideRight, width, Qt::TextShowMnemonic);
    }

    bool isBeside() const {
        return arrangement.image == qn::ImagePlace::leading || arrangement.image == qn::ImagePlace::trailing;
    }
    /// The space between image and title, in the direction in which they follow each other.
    QSize between(QSize image, QSize title) const {
        const int space = image.isEmpty() || title.isEmpty() ? 0 : arrangement.spacing;
        return isBeside() ? QSize(space, 0) : QSize(0, space);
    }
    /// Of both together.
    QSize sizeOf(QSize image, QSize title) const {
        const QSize widest = image.expandedTo(title), sum = image + title + between(image, title);
        return isBeside() ? QSize(sum.width(), widest.height()) : QSize(widest.width(), sum.height());
    }
    /// Of the image, or of the title, within the place of both.
    Qt::Alignment alignment(bool isImage) const {
        const bool isFirst = isImage == (arrangement.image == qn::ImagePlace::leading ||
                                         arrangement.image == qn::ImagePlace::above);
        return isBeside() ? (isFirst ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter
                          : (isFirst ? Qt::AlignTop : Qt::AlignBottom) | Qt::AlignHCenter;
    }

    void drawLabel(const QStyleOptionButton &button, QPainter &painter, const QWidget *widget) const {
        const bool isDown = button.state & (State_Sunken | State_On);
        const QRect room =
            button.rect.translated(isDown ? pixelMetric(PM_ButtonShiftHorizontal, &button, widget) : 0,
                                   isDown ? pixelMetric(PM_ButtonShiftVertical, &button, widget) : 0);
        const QSize image = imageSize(button), wanted = titleSize(button, button.text);
        const QSize left = room.size() - (isBeside() ? image + between(image, wanted) : QSize(0, 0));
        const QString shown = titleWithin(left.width(), button);
        const QSize title(std::min(titleSize(button, shown).width(), wanted.width()), wanted.height());
        const QRect place = alignedRect(button.direction, Qt::AlignCenter, sizeOf(image, title), room);
        const bool isEnabled = button.state & State_Enabled;
        if (!image.isEmpty())
            drawItemPixmap(&painter, alignedRect(button.direction, alignment(true), image, place),
                           Qt::AlignCenter,
                           button.icon.pixmap(image, painter.device()->devicePixelRatioF(),
                                              isEnabled ? QIcon::Normal : QIcon::Disabled,
                                              button.state & State_On ? QIcon::On : QIcon::Off));
        const int mnemonic =
            styleHint(SH_UnderlineShortcut, &button, widget) ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
        drawItemText(&painter, alignedRect(button.direction, alignment(false), title, place),
                     Qt::AlignCenter | mnemonic, button.palette, isEnabled, shown, QPalette::ButtonText);
    }
};

ArrangedStyle *styleOf(const QPushButton &button) {
    return dynamic_cast<ArrangedStyle *>(button.style());
}

} // namespace

qn::Arrangement qn::arrangement(const QPushButton &button) {
    const ArrangedStyle *style = styleOf(button);
    return style ? style->arrangement : Arrangement();
}

void qn::setArrangement(QPushButton &button, const Arrangement &arrangement) {
    if (!styleOf(button))
        button.setStyle(new ArrangedStyle(button));
    styleOf(button)->arrangement = {arrangement.image, std::max(arrangement.spacing, 0)};
    QEvent changed(QEvent::StyleChange); // has the button forget its size hint
    QCoreApplication::sendEvent(&button, &changed);
}
