#include "Platform/Interface/NSTableView.h"

#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Interface/QtText.h"
#include "Platform/Interface/TableRowDelegate.h"
#include "Platform/Interface/TextMetrics.h"
#include "Platform/RunLoop/NSRunLoop.h"
#include "Platform/Runtime/Object/Class.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>
#include <QWindow>

using dispatch::Clock;

/// The data source as a model of Qt: as many rows as it last reported; texts are asked for when they are
/// painted.
class NSTableModel final : public QAbstractTableModel {
public:
    explicit NSTableModel(NSTableView &table) : QAbstractTableModel(&table), table_(table) {}

    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : 1; }
    QVariant data(const QModelIndex &index, int role) const override {
        if (index.row() >= rows_)
            return {};
        switch (role) {
        case Qt::DisplayRole:
            return table_.lookOf(index.row()).name;
        case Qt::ToolTipRole:
            return toolTip(index.row());
        case Qt::AccessibleTextRole:
            return linesOf(table_.lookOf(index.row())).join(QStringLiteral(", "));
        default:
            return {};
        }
    }
    QVariant headerData(int, Qt::Orientation orientation, int role) const override {
        return orientation == Qt::Horizontal && role == Qt::DisplayRole ? QVariant(table_.column().heading)
                                                                        : QVariant();
    }

    /// For Qt's search by typing: the first shown row from `start` on that matches, continuing at the top.
    QModelIndexList match(const QModelIndex &start, int, const QVariant &value, int,
                          Qt::MatchFlags) const override {
        const QString typed = value.toString();
        for (int i = 0; i < rows_ && !typed.isEmpty(); ++i)
            if (const int row = (start.row() + i) % rows_;
                !table_.isRowHidden(row) && table_.isTypeSelectMatch(row, typed))
                return {index(row, 0)};
        return {};
    }

    /// Adds or removes rows at the end, so that the others stay selected.
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
    static QStringList linesOf(const NSTableRow &look) {
        QStringList lines{look.name, look.detail, look.more};
        lines.removeAll(QString());
        return lines;
    }
    /// Only for rows with more, or with texts that the cell cuts off.
    QVariant toolTip(int row) const {
        NSTableRow look = table_.lookOf(row);
        look.name = isolated(look.name);
        const auto &cells = static_cast<const TableRowDelegate &>(*table_.itemDelegate());
        if (look.more.isEmpty() && !cells.isCutOff(row, table_.columnWidth(0)))
            return {};
        // As HTML, so that tags in a name are shown as they are, and in the direction of the interface, not
        // of the name.
        return QStringLiteral("<div dir=\"%1\">%2</div>")
            .arg(QLatin1String(table_.isRightToLeft() ? "rtl" : "ltr"),
                 linesOf(look)
                     .join(QLatin1Char('\n'))
                     .toHtmlEscaped()
                     .replace(QLatin1Char('\n'), QStringLiteral("<br/>")));
    }

    NSTableView &table_;
    int rows_ = 0;
};

/// The target of the timer for a reload.
class TableReload final : public NSObject {
    NS_CLASS(TableReload, NSObject)
public:
    explicit TableReload(NSTableView &table) : table_(&table) {}

    /// Reloads after the other timers that are due, as one of them may change what the table shows.
    void reload() {
        dispatch::mainQueue().async([table = table_] {
            if (table)
                table->reloadIfSeen();
        });
    }

private:
    const QPointer<NSTableView> table_;
};

NS_IMPLEMENTATION(TableReload) {
    cls.method<&TableReload::reload>("reload");
}

/// The heading, aligned with the symbols of the rows.
class NSTableHeader final : public QHeaderView {
public:
    explicit NSTableHeader(QWidget *parent) : QHeaderView(Qt::Horizontal, parent) {
        setStretchLastSection(true);
        setHighlightSections(false);
    }

    QSize sizeHint() const override {
        return QHeaderView::sizeHint().expandedTo({0, fontMetrics().height() + 2 * 6});
    }

protected:
    void paintSection(QPainter *painter, const QRect &place, int section) const override {
        QStyleOptionHeader option;
        initStyleOption(&option);
        option.rect = place;
        option.section = section;
        style()->drawControl(QStyle::CE_HeaderSection, &option, painter, this);
        painter->setPen(palette().color(QPalette::ButtonText));
        painter->drawText(place.adjusted(12, 0, -12, 0),
                          static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) |
                              Qt::AlignVCenter,
                          model()->headerData(section, Qt::Horizontal).toString());
    }
};

bool NSTableViewDataSource::isTypeSelectMatch(NSTableView &table, NSInteger row, const Ref<NSString> &typed) {
    return table.lookOf(static_cast<int>(row)).name.startsWith(toQString(typed), Qt::CaseInsensitive);
}

NSTableView::NSTableView(QWidget *parent)
    : QTableView(parent), model_(new NSTableModel(*this)), rows_(new TableRowDelegate(*this)) {
    setModel(model_);
    setItemDelegate(rows_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalHeader(new NSTableHeader(this));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    fitRows();
}

NSTableView::~NSTableView() = default;

// Every row has the same height, so that ten thousand of them need not be measured.
void NSTableView::fitRows() {
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(rows_->rowHeight());
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
    const QSize least(26 * fontMetrics().averageCharWidth(), horizontalHeader()->sizeHint().height());
    const QSizeF text = TextMetrics(font()).size(placeholderText_, least.width());
    return {std::max(least.width(), qCeil(text.width())) + around,
            qCeil(text.height()) + around + least.height()};
}

int NSTableView::placeholderMargin() const {
    return fontMetrics().height();
}

NSInteger NSTableView::selectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

// In right-to-left layouts Qt's own looks for a column beyond the last one, and selects nothing.
void NSTableView::selectRow(int row) {
    setCurrentIndex(model_->index(row, 0));
}

QString NSTableView::textAt(int row) const {
    auto &self = const_cast<NSTableView &>(*this);
    return source_ ? toQString(source_->tableView(self, &column_, row)) : QString();
}

NSTableRow NSTableView::lookOf(int row) const {
    NSTableRow look = source_ ? source_->lookOfRow(const_cast<NSTableView &>(*this), row) : NSTableRow();
    if (QString text = textAt(row); !text.trimmed().isEmpty())
        look.name = std::move(text);
    return look;
}

bool NSTableView::isTypeSelectMatch(int row, const QString &typed) const {
    return source_ && source_->isTypeSelectMatch(const_cast<NSTableView &>(*this), row, toNSString(typed));
}

void NSTableView::reloadData() {
    if (std::exchange(reloadWanted_, true))
        return;
    arrangeReload();
}

void NSTableView::reloadAtOnce() {
    nextReload_ = Clock::current().now();
    reloadWanted_ = true;
    arrangeReload();
}

void NSTableView::arrangeReload() {
    const std::chrono::duration<double> wait = nextReload_ - Clock::current().now();
    if (reloadTimer_)
        reloadTimer_->invalidate();
    if (wait.count() <= 0) {
        viewport()->update(0, 0, 1, 1); // any paint event starts the reload, which then paints what changed
        return;
    }
    reloadTimer_ = NSTimer::timerWithTimeInterval(wait.count(), make<TableReload>(*this),
                                                  sel_registerName("reload"), nullptr, false);
    reloadTimer_->setTolerance(std::chrono::duration<double>(reloadPatience).count());
    NSRunLoop::mainRunLoop()->addTimer(reloadTimer_, NSRunLoopCommonModes);
}

// Without painting, which would cost more than everything else in an idle window. A table that cannot be seen
// reloads at the first paint when it can be seen again.
void NSTableView::reloadIfSeen() {
    const QWindow *const shownIn = window()->windowHandle();
    if (reloadIsDue() && isVisible() && shownIn && shownIn->isExposed())
        reloadNow();
}

bool NSTableView::reloadIsDue() const {
    return reloadWanted_ && Clock::current().now() >= nextReload_;
}

void NSTableView::reloadNow() {
    reloadWanted_ = false;
    nextReload_ = Clock::current().now() + reloadPace;
    const NSInteger count = source_ ? source_->numberOfRowsInTableView(*this) : 0;
    const int rows = static_cast<int>(std::clamp<NSInteger>(count, 0, std::numeric_limits<int>::max()));
    if (currentIndex().row() >= rows)
        selectionModel()->clear(); // Qt would select another row instead of the one removed
    const int known = model_->rowCount();
    model_->setRows(rows);
    applyFilter(known);
    if (auto looks = visibleRows(); looks != shown_) {
        shown_ = std::move(looks);
        viewport()->update();
    }
}

std::vector<NSTableRow> NSTableView::visibleRows() const {
    std::vector<NSTableRow> looks;
    const int first = std::max(rowAt(0), 0);
    const int last = rowAt(viewport()->height() - 1);
    for (int row = first; row < model_->rowCount() && (last < 0 || row <= last); ++row)
        if (!isRowHidden(row))
            looks.push_back(lookOf(row));
    return looks;
}

void NSTableView::setFilter(std::function<bool(int)> isShown) {
    filter_ = std::move(isShown);
    applyFilter(0);
    viewport()->update();
}

void NSTableView::applyFilter(int firstRow) {
    for (int row = firstRow; row < model_->rowCount(); ++row)
        if (const bool hidden = filter_ && !filter_(row); hidden != isRowHidden(row))
            setRowHidden(row, hidden);
}

int NSTableView::firstShownRow() const {
    int row = 0;
    while (row < model_->rowCount() && isRowHidden(row))
        ++row;
    return row < model_->rowCount() ? row : -1;
}

void NSTableView::paintEvent(QPaintEvent *event) {
    if (reloadIsDue())
        reloadNow();
    QTableView::paintEvent(event);
    if (firstShownRow() < 0)
        paintPlaceholder();
}

void NSTableView::showEvent(QShowEvent *event) {
    QTableView::showEvent(event);
    if (reloadWanted_)
        arrangeReload();
}

// A selected row that could be seen stays in view when there is less room.
void NSTableView::resizeEvent(QResizeEvent *event) {
    QTableView::resizeEvent(event);
    const int row = static_cast<int>(selectedRow());
    if (row != -1 && visualRect(model_->index(row, 0)).intersects(QRect(QPoint(), event->oldSize())))
        scrollTo(model_->index(row, 0));
}

void NSTableView::changeEvent(QEvent *event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitRows();
}

void NSTableView::keyPressEvent(QKeyEvent *event) {
    const QScopedValueRollback keyIsDown(keyIsDown_, true);
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return selectAgain();
    case Qt::Key_Space:
        if (!isTyping() && selectedRow() != -1)
            return selectAgain();
        break;
    case Qt::Key_Down:
    case Qt::Key_Up:
        // Without a selection an arrow selects the row that has the focus, instead of the one next to it.
        if (selectedRow() == -1 && firstShownRow() >= 0) {
            const int current = currentIndex().row();
            return selectRow(current < 0 || isRowHidden(current) ? firstShownRow() : current);
        }
        break;
    default:
        break;
    }
    QTableView::keyPressEvent(event);
    if (resting_) // a key that changes no selection prolongs the wait, too
        tellAfterRest();
}

void NSTableView::keyboardSearch(const QString &text) {
    typed_ = Clock::current().now();
    QTableView::keyboardSearch(text);
}

/// Whether a letter typed now continues the name being typed.
bool NSTableView::isTyping() const {
    const std::chrono::milliseconds interval(QApplication::keyboardInputInterval());
    return typed_ && Clock::current().now() - *typed_ < interval;
}

void NSTableView::focusOutEvent(QFocusEvent *event) {
    QTableView::focusOutEvent(event);
    tellWaitingSelection();
}

void NSTableView::mousePressEvent(QMouseEvent *event) {
    const int row = rowAt(event->position().toPoint().y());
    pressedAgain_ = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier && row != -1 &&
                    row == selectedRow();
    QTableView::mousePressEvent(event);
}

void NSTableView::mouseReleaseEvent(QMouseEvent *event) {
    QTableView::mouseReleaseEvent(event);
    if (std::exchange(pressedAgain_, false) && rowAt(event->position().toPoint().y()) == selectedRow())
        selectAgain();
}

// Home and End go to the first and last row, as there is only one column.
QModelIndex NSTableView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const bool toEnd = action == MoveHome || action == MoveEnd;
    if (action == MoveEnd && !currentIndex().isValid()) { // Qt would go to the first row
        int row = model_->rowCount() - 1;
        while (row >= 0 && isRowHidden(row))
            --row;
        return model_->index(row, 0);
    }
    return QTableView::moveCursor(action, toEnd ? modifiers | Qt::ControlModifier : modifiers);
}

void NSTableView::paintPlaceholder() {
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int margin = placeholderMargin();
    QRect place = viewport()->rect().adjusted(margin, margin, -margin, -margin);
    const QPoint center = place.center();
    place.setWidth(TextMetrics(font()).balancedWidth(placeholderText_, place.width()));
    place.moveCenter(center);
    painter.drawText(place, Qt::AlignCenter | Qt::TextWordWrap, placeholderText_);
}

void NSTableView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) {
    QTableView::selectionChanged(selected, deselected);
    if (selected.isEmpty() && deselected.isEmpty())
        return;
    if (keyIsDown_)
        tellAfterRest();
    else
        tellSoon();
}

void NSTableView::selectAgain() {
    if (selectedRow() != -1)
        tellSoon();
}

bool NSTableView::tellWaitingSelection() {
    if (resting_)
        tellSoon();
    return telling_;
}

void NSTableView::tellAfterRest() {
    resting_ = true;
    rest_ = Clock::current().callAt(Clock::current().now() + keyRest, [table = QPointer<NSTableView>(this)] {
        dispatch::mainQueue().async([table] {
            if (table && table->resting_)
                table->tell();
        });
    });
}

// After the event being processed, so that Qt has moved the focus and told screen readers by then.
void NSTableView::tellSoon() {
    resting_ = false;
    if (std::exchange(telling_, true))
        return;
    dispatch::mainQueue().async([table = QPointer<NSTableView>(this)] {
        if (table)
            table->tell();
    });
}

void NSTableView::tell() {
    resting_ = telling_ = false;
    if (const int row = static_cast<int>(selectedRow()); row != -1) {
        scrollTo(model_->index(row, 0));
        viewport()->repaint();
    }
    if (delegate_)
        delegate_->tableViewSelectionDidChange(*this);
}
