#include "Platform/Interface/TextMetrics.h"

#include "Platform/Interface/TextClusters.h"

#include <QFontMetricsF>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

struct TextMetrics::Extent {
    qsizetype lines = 0;
    qreal width = 0, height = 0;

    void add(qreal lineWidth, qreal lineHeight) {
        ++lines;
        width = std::max(width, lineWidth);
        height += lineHeight;
    }
};

namespace {

/// More than a line of `longestLine` units takes, and less than what Qt's layout counts to.
constexpr qreal widest = 8'000'000;

qreal usable(qreal width) {
    return width > 0 ? std::min(width, widest) : 0; // also of what is no number
}

/// A text in lines, as Qt lays it out. The first line may be shorter than the others.
class Layout {
public:
    Layout(const QString &text, const QFont &font, qreal firstWidth, qreal width, QTextOption::WrapMode wrap)
        : layout_(text, font) {
        QTextOption option;
        option.setWrapMode(wrap);
        layout_.setTextOption(option);
        layout_.beginLayout();
        for (QTextLine line; (line = layout_.createLine()).isValid(); firstWidth = width)
            line.setLineWidth(firstWidth);
        layout_.endLayout();
    }

    int count() const { return layout_.lineCount(); }
    QTextLine operator[](int index) const { return layout_.lineAt(index); }

private:
    QTextLayout layout_;
};

bool endsParagraph(QChar character) {
    return character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

/// The same text without what would begin another line.
QString onOneLine(QString text) {
    const auto isBlank = [](QChar character) {
        return (character >= u'\t' && character <= u'\r') || character == u'\x85' || endsParagraph(character);
    };
    if (std::ranges::any_of(std::as_const(text), isBlank))
        std::ranges::replace_if(text, isBlank, QChar(u' '));
    return text;
}

/// A beginning of the paragraph that can be laid out at once; it ends between two clusters, if it can.
QStringView pieceOf(QStringView paragraph) {
    if (paragraph.size() <= TextMetrics::longestLine)
        return paragraph;
    const QStringView most = paragraph.first(TextMetrics::longestLine);
    const auto boundaries = clusterBoundaries(most); // the last one is only where `most` ends
    const qsizetype end = boundaries[boundaries.size() - 2];
    return end > 0 ? most.first(end) : most;
}

/// A number of clusters below `count` that fits, while one more does not. None fit for sure, all do not.
template <class Fits>
qsizetype mostThatFit(qsizetype guess, qsizetype count, const Fits &fits) {
    qsizetype fitting = 0, tooMany = std::max<qsizetype>(guess, 1);
    for (; tooMany < count && fits(tooMany); tooMany *= 2)
        fitting = tooMany;
    tooMany = std::min(tooMany, count);
    while (tooMany - fitting > 1) {
        const qsizetype middle = fitting + (tooMany - fitting) / 2;
        (fits(middle) ? fitting : tooMany) = middle;
    }
    return fitting;
}

} // namespace

// Piece by piece, since a layout takes many times the memory of its text. What is on the last line of a piece
// goes to the next one, as the line may be longer.
void TextMetrics::addParagraph(Extent &extent, QStringView paragraph, qreal width,
                               QTextOption::WrapMode wrap) const {
    qreal begun = 0, height = 0; // of a line longer than the pieces
    for (;;) {
        const QStringView piece = pieceOf(paragraph);
        const Layout lines(piece.toString(), font_, std::max(width - begun, 0.0), width, wrap);
        const bool isLast = piece.size() == paragraph.size();
        const int whole = isLast ? lines.count() : lines.count() - 1;
        for (int i = 0; i < whole; ++i) {
            extent.add(begun + lines[i].naturalTextWidth(), std::max(height, lines[i].height()));
            begun = height = 0;
        }
        if (isLast)
            return;
        if (whole > 0) {
            paragraph = paragraph.sliced(lines[whole].textStart());
        } else {
            begun += lines[0].naturalTextWidth();
            height = std::max(height, lines[0].height());
            paragraph = paragraph.sliced(piece.size());
        }
    }
}

TextMetrics::Extent TextMetrics::extentOf(const QString &text, qreal width,
                                          QTextOption::WrapMode wrap) const {
    Extent extent;
    for (QStringView rest(text);;) {
        const auto end = std::ranges::find_if(rest, endsParagraph);
        const qsizetype length = end - rest.begin();
        addParagraph(extent, rest.first(length), usable(width), wrap);
        if (end == rest.end())
            break;
        rest = rest.sliced(length).startsWith(u"\r\n") ? rest.sliced(length + 2) : rest.sliced(length + 1);
    }
    extent.height += static_cast<qreal>(extent.lines - 1) * QFontMetricsF(font_).leading();
    return extent;
}

// What Qt calls the natural width of right-to-left lines may leave out how far their glyphs overhang, by up
// to a fifth of their height; with no more room than that, the text would be broken into more lines.
QSizeF TextMetrics::size(const QString &text, qreal width, QTextOption::WrapMode wrap) const {
    const Extent extent = extentOf(text, width, wrap);
    const qreal step = QFontMetricsF(font_).height() / 16;
    qreal enough = extent.width;
    while (enough < usable(width) && numberOfLines(text, enough, wrap) > extent.lines)
        enough = std::min(enough + step, usable(width));
    return {enough, extent.height};
}

qsizetype TextMetrics::numberOfLines(const QString &text, qreal width, QTextOption::WrapMode wrap) const {
    return extentOf(text, width, wrap).lines;
}

int TextMetrics::balancedWidth(const QString &text, int width) const {
    const qsizetype lines = numberOfLines(text, width);
    const int widestWord = static_cast<int>(std::ceil(size(text, 0).width()));
    int tooNarrow = widestWord - 1, enough = std::max(width, widestWord);
    while (enough - tooNarrow > 1) {
        const int middle = tooNarrow + (enough - tooNarrow) / 2;
        (numberOfLines(text, middle) > lines ? tooNarrow : enough) = middle;
    }
    return enough;
}

bool TextMetrics::fits(const QString &text, qreal width) const {
    return fitsOnLine(onOneLine(text), width);
}

bool TextMetrics::fitsOnLine(const QString &line, qreal width) const {
    return line.size() <= longestLine &&
           Layout(line, font_, widest, widest, QTextOption::NoWrap)[0].naturalTextWidth() <= usable(width);
}

qsizetype TextMetrics::fittingLength(const QString &text, qreal width) const {
    return elided(text, width, Qt::ElideNone).size();
}

QString TextMetrics::elided(const QString &text, qreal width, Qt::TextElideMode mode) const {
    const QString line = onOneLine(text);
    return fitsOnLine(line, width) ? line : cutToFit(line, clusterBoundaries(text), width, mode);
}

QString TextMetrics::cutToFit(const QString &line, const std::vector<qsizetype> &boundaries, qreal width,
                              Qt::TextElideMode mode) const {
    const auto count = static_cast<qsizetype>(boundaries.size()) - 1;
    const auto begin = [&](qsizetype clusters) {
        return line.first(boundaries[static_cast<std::size_t>(clusters)]);
    };
    const auto end = [&](qsizetype clusters) {
        return line.sliced(boundaries[static_cast<std::size_t>(count - clusters)]);
    };
    const auto cut = [&](qsizetype kept) -> QString {
        switch (mode) {
        case Qt::ElideLeft:
            return QStringLiteral("…") + end(kept);
        case Qt::ElideMiddle:
            return begin((kept + 1) / 2) + QStringLiteral("…") + end(kept / 2);
        case Qt::ElideRight:
            return begin(kept) + QStringLiteral("…");
        case Qt::ElideNone:
            return begin(kept);
        }
        return {};
    };
    const auto cutFits = [&](qsizetype kept) { return fitsOnLine(cut(kept), width); };
    if (!cutFits(0))
        return {};
    const qreal guess = usable(width) / std::max(QFontMetricsF(font_).averageCharWidth(), 1.0);
    return cut(mostThatFit(static_cast<qsizetype>(guess), count, cutFits));
}
