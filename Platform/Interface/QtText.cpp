#include "Platform/Interface/QtText.h"

namespace {

/// Whether it opens or closes an embedding, an override or an isolate.
bool marksDirection(QChar character) {
    const char16_t unit = character.unicode();
    return (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069);
}

} // namespace

QString isolated(const QString &text) {
    constexpr QChar firstStrongIsolate(0x2068), popDirectionalIsolate(0x2069);
    QString result(firstStrongIsolate);
    for (const QChar character : text)
        if (!marksDirection(character))
            result += character;
    return result + popDirectionalIsolate;
}
