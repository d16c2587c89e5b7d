// Draws the rows of an NSTableView: a symbol, the name, and beneath it a line in small muted letters.
//
// Threads: the main thread.
#pragma once

#include <QStyledItemDelegate>

class NSTableView;

class TableRowDelegate final : public QStyledItemDelegate {
public:
    explicit TableRowDelegate(NSTableView &table);

    /// The height of every row, with the table's font.
    int rowHeight() const;
    /// Whether the row's texts are too wide for its cell.
    bool isCutOff(int row, int width) const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    QFont detailFont() const;

    NSTableView &table_;
};
