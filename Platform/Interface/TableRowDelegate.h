// Draws the rows of an NSTableView: a symbol, the name, and beneath it the detail in a small, muted font.
//
// Threads: the main thread.
#pragma once

#include <QStyledItemDelegate>

#pragma GCC visibility push(default)

class NSTableView;

class TableRowDelegate final : public QStyledItemDelegate {
public:
    explicit TableRowDelegate(NSTableView &table);

    /// The height of every row with the table's font, in logical pixels.
    int rowHeight() const;
    /// Whether a text of the row is too wide for a cell of that width.
    bool isCutOff(int row, int width) const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    QFont detailFont() const;

    NSTableView &table_;
};

#pragma GCC visibility pop
