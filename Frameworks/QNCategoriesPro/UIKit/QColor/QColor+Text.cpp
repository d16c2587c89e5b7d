#include "Frameworks/QNCategoriesPro/UIKit/QColor/QColor+Text.h"

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace {

constexpr qsizetype longestText = 32; // no name is as long

std::optional<int> digitValue(QChar digit) {
    const char16_t unit = digit.unicode();
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    if (unit >= u'a' && unit <= u'f')
        return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'F')
        return unit - u'A' + 10;
    return std::nullopt;
}

/// The three or four components that the digits stand for, 0 to 255; none of them for other texts.
std::vector<int> componentsOf(QStringView digits) {
    const qsizetype count = digits.size();
    if (count != 3 && count != 4 && count != 6 && count != 8)
        return {};
    const qsizetype width = count > 4 ? 2 : 1;
    std::vector<int> components;
    for (qsizetype at = 0; at < count; at += width) {
        const auto high = digitValue(digits[at]), low = digitValue(digits[at + width - 1]);
        if (!high || !low)
            return {};
        components.push_back(*high * 16 + *low);
    }
    return components;
}

/// The names, each with its colour.
const QHash<QString, QRgb> &namedColors() {
    static const auto &names = *[] {
        auto *found = new QHash<QString, QRgb>;
        for (const QString &name : QColor::colorNames())
            found->insert(name, QColor(name).rgba());
        return found;
    }();
    return names;
}

QString withoutDoubles(const QString &text) {
    QString made(text.front());
    for (qsizetype at = 1; at < text.size(); at += 2) {
        if (text[at] != text[at + 1])
            return text;
        made += text[at];
    }
    return made;
}

} // namespace

std::optional<QColor> qn::colorWithText(const QString &text, AlphaDigits alpha) {
    if (text.size() > longestText)
        return std::nullopt;
    auto components = componentsOf(QStringView(text).mid(text.startsWith(u'#')));
    if (components.empty()) {
        const auto named = namedColors().constFind(text.toLower());
        return named == namedColors().cend() ? std::nullopt : std::optional(QColor::fromRgba(*named));
    }
    if (components.size() == 3)
        components.push_back(255);
    else if (alpha == AlphaDigits::first)
        std::rotate(components.begin(), components.begin() + 1, components.end());
    return QColor(components[0], components[1], components[2], components[3]);
}

QString qn::hexText(const QColor &color, AlphaDigits alpha) {
    if (!color.isValid())
        return {};
    const QColor rgb = color.toRgb();
    QString digits = rgb.name(rgb.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
    if (digits.size() == 7 || alpha == AlphaDigits::first)
        return digits;
    return u'#' + digits.mid(3) + digits.mid(1, 2);
}

QString qn::shortHexText(const QColor &color, AlphaDigits alpha) {
    const QString digits = hexText(color, alpha);
    return digits.isEmpty() ? digits : withoutDoubles(digits);
}

QString qn::colorName(const QColor &color) {
    if (!color.isValid())
        return {};
    const QStringList names = namedColors().keys(color.rgba());
    const auto first = std::min_element(names.begin(), names.end());
    return first == names.end() ? QString() : *first;
}
