#include "Frameworks/QNCategoriesPro/UIKit/QLineEdit/QLineEdit+Text.h"

#include "Platform/Interface/QtText.h"
#include "Platform/Interface/TextClusters.h"

#include <QLineEdit>

#include <algorithm>

Ref<NSString> qn::text(const QLineEdit &field) {
    return toNSString(field.text());
}

void qn::setText(QLineEdit &field, const Ref<NSString> &text) {
    field.setText(toQString(text));
}

Ref<NSString> qn::placeholder(const QLineEdit &field) {
    return toNSString(field.placeholderText());
}

void qn::setPlaceholder(QLineEdit &field, const Ref<NSString> &placeholder) {
    field.setPlaceholderText(toQString(placeholder));
}

NSRange qn::selectedRange(const QLineEdit &field) {
    const int begin = field.hasSelectedText() ? field.selectionStart() : field.cursorPosition();
    return NSMakeRange(static_cast<NSUInteger>(begin), static_cast<NSUInteger>(field.selectionLength()));
}

void qn::setSelectedRange(QLineEdit &field, NSRange range) {
    const auto length = static_cast<NSUInteger>(field.text().size());
    const NSUInteger location = std::min(range.location, length);
    const NSUInteger end = location + std::min(range.length, length - location);
    const auto boundaries = clusterBoundaries(field.text());
    const auto before = std::ranges::upper_bound(boundaries, static_cast<qsizetype>(location)) - 1;
    const auto after = std::ranges::lower_bound(boundaries, static_cast<qsizetype>(end));
    if (location == end)
        field.setCursorPosition(static_cast<int>(*before));
    else
        field.setSelection(static_cast<int>(*before), static_cast<int>(*after - *before));
}
