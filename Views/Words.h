// Words of the string table as the interface's texts.
#pragma once

#include "Platform/Foundation/System/Localization.h"
#include "Platform/Interface/QtText.h"

/// The translation of the key.
inline QString words(const Ref<NSString> &key) {
    return toQString(NSLocalizedString(key));
}

/// The same with `text` in place of "%@": foreign text, shown on one line and in its own direction.
inline QString words(const Ref<NSString> &key, const QString &text) {
    return words(key).replace(QStringLiteral("%@"), isolated(text.simplified()));
}
