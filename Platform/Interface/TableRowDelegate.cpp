#include "Platform/Interface/TableRowDelegate.h"

#include "Platform/Interface/Ink.h"
#include "Platform/Interface/NSTableView.h"
#include "Platform/Interface/QtText.h"
#include "Platform/Interface/Symbol.h"
#include "Platform/Interface/TextMetrics.h"

#include <QPainter>

namespace {

constexpr int symbolSize = 24;
constexpr int gap = 12;   // around the symbol, and at the far end
constexpr int around = 6; // above the name and beneath the detail, at least

QRect textPlace(const QRect &row, Qt::LayoutDirection direction) {
    const QRect place = row.adjusted(gap + symbolSize + gap, 0, -gap, 0);
    return QStyle::visualRect(direction, row, place);
}

} // namespace

TableRowDelegate::TableRowDelegate(NSTableView &table) : QStyledItemDelegate(&table), table_(table) {}

QFont TableRowDelegate::detailFont() const {
    return noteFont(table_.font());
}

int TableRowDelegate::rowHeight() const {
    const int lines = QFontMetrics(table_.font()).height() + QFontMetrics(detailFont()).height();
    return std::max(44, lines + 2 * around);
}

bool TableRowDelegate::isCutOff(int row, int width) const {
    const NSTableRow look = table_.lookOf(row);
    const int room = textPlace(QRect(0, 0, width, 1), Qt::LeftToRight).width();
    return !TextMetrics(table_.font()).fits(look.name, room) ||
           !TextMetrics(detailFont()).fits(look.detail, room);
}

QSize TableRowDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const {
    return {gap + symbolSize + gap + 20 * table_.fontMetrics().averageCharWidth() + gap, rowHeight()};
}

void TableRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &given,
                             const QModelIndex &index) const {
    QStyleOptionViewItem option = given;
    initStyleOption(&option, index);
    option.text.clear();
    QStyle &style = *table_.style();
    style.drawControl(QStyle::CE_ItemViewItem, &option, painter, &table_); // ground and focus

    const bool selected = option.state & QStyle::State_Selected;
    const auto group = option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
    const QColor ground = option.palette.color(group, selected ? QPalette::Highlight : QPalette::Base);
    const QColor ink = option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
    const QColor muted = mutedInk(ink, ground);
    const NSTableRow look = table_.lookOf(index.row());

    const QRect row = option.rect;
    if (look.symbol) {
        const QRect place(row.left() + gap, row.top() + (row.height() - symbolSize) / 2, symbolSize,
                          symbolSize);
        drawSymbol(*painter, *look.symbol, QStyle::visualRect(option.direction, row, place), muted);
    }
    const QFontMetrics nameMetrics(table_.font()), detailMetrics(detailFont());
    const int nameHeight = nameMetrics.height();
    const int lines = nameHeight + (look.detail.isEmpty() ? 0 : detailMetrics.height());
    QRect place = textPlace(row, option.direction);
    place.setTop(row.top() + (row.height() - lines) / 2);
    const auto flags =
        static_cast<int>(QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignTop)) |
        Qt::TextSingleLine;
    const auto draw = [&](const QString &text, const QFont &font, const QColor &color) {
        painter->setFont(font);
        painter->setPen(color);
        painter->drawText(place, flags, text);
        place.setTop(place.top() + nameHeight);
    };
    const auto elided = [&](const QString &text, const QFont &font) {
        return TextMetrics(font).elided(text, place.width(), Qt::ElideRight);
    };
    painter->save();
    draw(isolated(elided(look.name, table_.font())), table_.font(), look.isNameMuted ? muted : ink);
    draw(elided(look.detail, detailFont()), detailFont(), muted);
    painter->restore();
}
