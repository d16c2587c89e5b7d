// Conversions between the platform's texts and Qt's.
#pragma once

#include "Platform/Foundation/Text/NSString.h"

#include <QString>

#pragma GCC visibility push(default)

/// An empty text for none.
inline QString toQString(const Ref<NSString> &text) {
    return text ? QString::fromUtf16(text->units().data(), static_cast<qsizetype>(text->length()))
                : QString();
}

/// A foreign text for use within a sentence: isolated by Unicode's marks, so that it is shown in its own
/// direction and does not affect that of the sentence. Its own marks of direction are removed.
QString isolated(const QString &text);

inline Ref<NSString> toNSString(const QString &text) {
    return make<NSString>(text.toStdU16String());
}

#pragma GCC visibility pop
