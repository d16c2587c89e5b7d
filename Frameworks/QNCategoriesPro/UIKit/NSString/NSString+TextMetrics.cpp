#include "Frameworks/QNCategoriesPro/UIKit/NSString/NSString+TextMetrics.h"

#include "Platform/Interface/QtText.h"
#include "Platform/Interface/TextMetrics.h"

QSizeF qn::measuredSize(const Ref<NSString> &text, const QFont &font, qreal width,
                        QTextOption::WrapMode wrap) {
    return TextMetrics(font).size(toQString(text), width, wrap);
}

NSUInteger qn::numberOfLines(const Ref<NSString> &text, const QFont &font, qreal width,
                             QTextOption::WrapMode wrap) {
    return static_cast<NSUInteger>(TextMetrics(font).numberOfLines(toQString(text), width, wrap));
}

Ref<NSString> qn::fittingPrefix(const Ref<NSString> &text, const QFont &font, qreal width) {
    if (!text)
        return nullptr;
    const QString whole = toQString(text);
    return toNSString(whole.first(TextMetrics(font).fittingLength(whole, width)));
}

Ref<NSString> qn::elidedText(const Ref<NSString> &text, const QFont &font, qreal width,
                             Qt::TextElideMode mode) {
    return text ? toNSString(TextMetrics(font).elided(toQString(text), width, mode)) : nullptr;
}
