// How much room a text takes, as painters and labels lay it out: in every script and direction, with the
// fonts that stand in for characters that the font lacks.
//
//     const TextMetrics metrics(table.font());
//     painter.drawText(place, flags, metrics.elided(name, place.width(), Qt::ElideRight));
//
// Lengths are in logical pixels. A width below 0, or one that is no number, counts as 0. Time grows with the
// length of the text, memory does not, whatever the text consists of; texts may contain NUL.
//
// In operations on several lines, a line also ends at CR, LF, CR LF, U+2028 and U+2029. In those on one line,
// these and the other blanks of control count as spaces, and a line has at most `longestLine` units: no
// screen is wide enough for more that can be seen.
//
// Threads: any, each with its own object.
#pragma once

#include <QFont>
#include <QSizeF>
#include <QString>
#include <QTextOption>

#include <limits>
#include <vector>

class TextMetrics {
public:
    /// In UTF-16 units. Qt's layout cuts longer texts itself, even within a grapheme cluster.
    static constexpr qsizetype longestLine = 4096;
    static constexpr qreal unlimited = std::numeric_limits<qreal>::infinity();

    explicit TextMetrics(const QFont &font) : font_(font) {}

    /// The size of the text in lines of that width: as wide as its longest line, and so wider than `width` if
    /// a line cannot be broken there; in a place of that size it has as many lines. The empty text is one
    /// empty line. Lines longer than `longestLine` are put together from pieces without kerning between them.
    QSizeF size(const QString &text, qreal width = unlimited,
                QTextOption::WrapMode wrap = QTextOption::WordWrap) const;
    /// 1 or more.
    qsizetype numberOfLines(const QString &text, qreal width,
                            QTextOption::WrapMode wrap = QTextOption::WordWrap) const;
    /// The least width in whole pixels, from that of the widest word to `width`, at which a text that breaks
    /// between words needs no more lines than at `width`. Its lines are about equally long then, and none has
    /// a single word. That of the widest word if this is greater than `width`.
    int balancedWidth(const QString &text, int width) const;

    /// Whether the text fits on one line of that width.
    bool fits(const QString &text, qreal width) const;
    /// The length, in UTF-16 units, of a beginning of the text that fits on one line of that width and no
    /// longer does with one more grapheme cluster; that of the whole text if this fits. The beginning ends
    /// between two clusters, and is measured as it looks alone.
    qsizetype fittingLength(const QString &text, qreal width) const;
    /// The text on one line of that width: if it does not fit, as many of its grapheme clusters as do, and an
    /// ellipsis in place of the others, at its beginning (Qt::ElideLeft), in its middle or at its end.
    /// Without ellipsis for Qt::ElideNone. Empty when not even the ellipsis fits. Texts that are `isolated`
    /// are elided first.
    QString elided(const QString &text, qreal width, Qt::TextElideMode mode) const;

private:
    struct Extent;
    Extent extentOf(const QString &text, qreal width, QTextOption::WrapMode wrap) const;
    void addParagraph(Extent &extent, QStringView paragraph, qreal width, QTextOption::WrapMode wrap) const;
    bool fitsOnLine(const QString &line, qreal width) const;
    QString cutToFit(const QString &line, const std::vector<qsizetype> &boundaries, qreal width,
                     Qt::TextElideMode mode) const;

    QFont font_;
};
