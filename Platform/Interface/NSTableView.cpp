#include "Platform/Interface/NSTableView.h"

#include "Platform/Dispatch/MainQueue.h"
#include "Platform/Interface/QtText.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

using dispatch::Clock;

namespace {
constexpr int placeholderFlags = Qt::AlignCenter | Qt::TextWordWrap;
} // namespace

/// Qt's view of the data source: as many rows as it last said, their texts asked for when painted.
class NSTableModel final : public QAbstractTableModel {
public:
    explicit NSTableModel(NSTableView &table) : QAbstractTableModel(&table), table_(table) {}

    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : 1; }
    QVariant data(const QModelIndex &index, int role) const override {
        if (index.row() >= rows_)
            return {};
        if (role == Qt::ToolTipRole) // tool tips would take a text with tags for one with formats
            return QStringLiteral("<span>%1</span>").arg(table_.textAt(index.row()).toHtmlEscaped());
        const bool text = role == Qt::DisplayRole || role == Qt::AccessibleTextRole;
        return text ? QVariant(table_.textAt(index.row())) : QVariant();
    }
    QVariant headerData(int, Qt::Orientation orientation, int role) const override {
        return orientation == Qt::Horizontal && role == Qt::DisplayRole ? QVariant(table_.column().heading)
                                                                        : QVariant();
    }

    /// Rows come and go at the end, so that the selection of the others stays.
    void setRows(int rows) {
        if (rows > rows_) {
            beginInsertRows({}, rows_, rows - 1);
            rows_ = rows;
            endInsertRows();
        } else if (rows < rows_) {
            beginRemoveRows({}, rows, rows_ - 1);
            rows_ = rows;
            endRemoveRows();
        }
    }
    void headingChanged() { emit headerDataChanged(Qt::Horizontal, 0, 0); }

private:
    NSTableView &table_;
    int rows_ = 0;
};

NSTableView::NSTableView(QWidget *parent) : QTableView(parent), model_(new NSTableModel(*this)) {
    setModel(model_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    fitRows();
}

NSTableView::~NSTableView() = default;

// Every row has the same height, so that ten thousand of them need not be measured.
void NSTableView::fitRows() {
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + fontMetrics().height() * 3 / 4);
}

void NSTableView::setDataSource(NSTableViewDataSource *source) {
    source_ = source;
    reloadData();
}

NSTableColumn *NSTableView::tableColumnWithIdentifier(const QString &identifier) {
    return identifier == column_.identifier ? &column_ : nullptr;
}

void NSTableView::setHeading(const QString &heading) {
    column_.heading = heading;
    model_->headingChanged();
}

void NSTableView::setPlaceholderText(const QString &text) {
    placeholderText_ = text;
    updateGeometry();
    viewport()->update();
}

QSize NSTableView::minimumSizeHint() const {
    const int around = 2 * (placeholderMargin() + frameWidth());
    const QRect place(0, 0, 26 * fontMetrics().averageCharWidth(), QWIDGETSIZE_MAX);
    const QSize text = fontMetrics().boundingRect(place, placeholderFlags, placeholderText_).size();
    return {std::max(place.width(), text.width()) + around,
            text.height() + around + horizontalHeader()->sizeHint().height()};
}

int NSTableView::placeholderMargin() const {
    return fontMetrics().height();
}

NSInteger NSTableView::selectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

QString NSTableView::textAt(int row) const {
    auto &self = const_cast<NSTableView &>(*this);
    return source_ ? toQString(source_->tableView(self, &column_, row)) : QString();
}

void NSTableView::reloadData() {
    if (std::exchange(reloadWanted_, true))
        return;
    requestPaint();
}

void NSTableView::requestPaint() {
    Clock &clock = Clock::current();
    if (clock.now() >= nextReload_) {
        viewport()->update(0, 0, 1, 1); // any paint will do; what changed is painted once it is known
        return;
    }
    alarm_ = clock.callAt(nextReload_, [table = QPointer<NSTableView>(this)] {
        dispatch::mainQueue().async([table] {
            if (table)
                table->viewport()->update(0, 0, 1, 1);
        });
    });
}

void NSTableView::reloadNow() {
    reloadWanted_ = false;
    nextReload_ = Clock::current().now() + reloadPace;
    const NSInteger count = source_ ? source_->numberOfRowsInTableView(*this) : 0;
    const int rows = static_cast<int>(std::clamp<NSInteger>(count, 0, std::numeric_limits<int>::max()));
    if (currentIndex().row() >= rows)
        selectionModel()->clear(); // Qt would select another row in the place of one that goes
    model_->setRows(rows);
    if (QStringList texts = visibleTexts(); texts != shown_) {
        shown_ = std::move(texts);
        viewport()->update();
    }
}

QStringList NSTableView::visibleTexts() const {
    QStringList texts;
    const int first = std::max(rowAt(0), 0);
    const int last = rowAt(viewport()->height() - 1);
    for (int row = first; row < model_->rowCount() && (last < 0 || row <= last); ++row)
        texts.append(textAt(row));
    return texts;
}

void NSTableView::paintEvent(QPaintEvent *event) {
    if (reloadWanted_ && Clock::current().now() >= nextReload_)
        reloadNow();
    QTableView::paintEvent(event);
    if (model_->rowCount() == 0)
        paintPlaceholder();
}

void NSTableView::showEvent(QShowEvent *event) {
    QTableView::showEvent(event);
    if (reloadWanted_)
        requestPaint();
}

void NSTableView::changeEvent(QEvent *event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitRows();
}

void NSTableView::keyPressEvent(QKeyEvent *event) {
    // Without a selection an arrow selects the row that has the focus, instead of the one next to it.
    const bool arrow = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (arrow && selectedRow() == -1 && model_->rowCount() > 0)
        return selectRow(std::max(currentIndex().row(), 0));
    QTableView::keyPressEvent(event);
}

// Home and End go to the first and last row: with one column there is no other way to go.
QModelIndex NSTableView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const bool toEnd = action == MoveHome || action == MoveEnd;
    return QTableView::moveCursor(action, toEnd ? modifiers | Qt::ControlModifier : modifiers);
}

void NSTableView::paintPlaceholder() {
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int margin = placeholderMargin();
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin), placeholderFlags,
                     placeholderText_);
}

void NSTableView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) {
    QTableView::selectionChanged(selected, deselected);
    if (delegate_)
        delegate_->tableViewSelectionDidChange(*this);
}
