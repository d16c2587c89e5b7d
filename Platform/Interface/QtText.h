// Texts of the platform as Qt's, and back.
#pragma once

#include "Platform/Foundation/Text/NSString.h"

#include <QString>

/// An empty text for none.
inline QString toQString(const Ref<NSString> &text) {
    return text ? QString::fromUtf16(text->units().data(), static_cast<qsizetype>(text->length()))
                : QString();
}

/// A foreign text for a place in a sentence: shown in its own direction, and not turning around what stands
/// beside it. Its own marks of direction are left out.
QString isolated(const QString &text);

inline Ref<NSString> toNSString(const QString &text) {
    return make<NSString>(text.toStdU16String());
}
