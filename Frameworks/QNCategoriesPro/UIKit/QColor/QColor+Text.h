// Colours from and to texts.
//
//     if (const auto color = qn::colorWithText("#2A6"))
//
// Any thread.
#pragma once

#include <QColor>
#include <QString>

#include <optional>

#pragma GCC visibility push(default)

namespace qn {

/// Which of the four components a text of 4 or 8 digits begins or ends with: `last` is RRGGBBAA, as on web
/// pages; `first` is AARRGGBB, as Qt has it.
enum class AlphaDigits { last, first };

/// 3, 4, 6 or 8 hexadecimal digits, with or without "#" in front (3 and 4: every digit stands for two of it),
/// or a name of SVG 1.0, "transparent" included. Small and capital letters are the same, and no blanks are
/// allowed. None for any other text.
std::optional<QColor> colorWithText(const QString &text, AlphaDigits alpha = AlphaDigits::last);

/// "#22aa66", or "#22aa6680" when the colour is not opaque; 8 bits per component. The empty text for an
/// invalid colour.
QString hexText(const QColor &color, AlphaDigits alpha = AlphaDigits::last);
/// The same with 3 or 4 digits, if they say as much: "#2a6", "#2a68".
QString shortHexText(const QColor &color, AlphaDigits alpha = AlphaDigits::last);

/// The name of SVG 1.0 for exactly this colour, the first in the alphabet if there are two: "aqua", not
/// "cyan"; the empty text when it has none.
QString colorName(const QColor &color);

} // namespace qn

#pragma GCC visibility pop
