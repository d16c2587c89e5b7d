// How much room a text takes: TextMetrics for the platform's texts.
//
//     const auto shown = qn::elidedText(name, label.font(), label.width(), Qt::ElideMiddle);
//
// Platform/Interface/TextMetrics.h says what counts as a line, what widths mean, and what hostile texts cost.
// None is as the empty text, and stays none. Threads: any.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <QFont>
#include <QSizeF>
#include <QTextOption>

#pragma GCC visibility push(default)

class NSString;

namespace qn {

/// The size of the text in lines of that width, in logical pixels.
QSizeF measuredSize(const Ref<NSString> &text, const QFont &font, qreal width,
                    QTextOption::WrapMode wrap = QTextOption::WordWrap);
/// 1 or more.
NSUInteger numberOfLines(const Ref<NSString> &text, const QFont &font, qreal width,
                         QTextOption::WrapMode wrap = QTextOption::WordWrap);

/// The longest beginning of the text that fits on one line of that width; it cuts no grapheme cluster.
Ref<NSString> fittingPrefix(const Ref<NSString> &text, const QFont &font, qreal width);
/// The text on one line of that width, if need be with an ellipsis at its beginning, in its middle or at its
/// end.
Ref<NSString> elidedText(const Ref<NSString> &text, const QFont &font, qreal width,
                         Qt::TextElideMode mode = Qt::ElideRight);

} // namespace qn

#pragma GCC visibility pop
