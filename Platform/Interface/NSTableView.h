// A table with one column that asks a data source for what it shows, one cell at a time.
//
// `reloadData` keeps selection and scroll position; when the selected row disappears, no row is selected. It
// asks the data source for its number of rows once, as soon as the table can be seen. So a data source that
// calls `reloadData` again for every answer keeps the table current at a small cost: at most once per
// `reloadPace`, together with the next timer that wakes the thread anyway, and only while the table can be
// seen.
//
// The delegate is told of a selection when the row is in view, painted and announced to screen readers: soon
// after a click, and after moves by the keyboard once no key was pressed for `keyRest`. A selection that is
// confirmed (Return, Space, a click on the selected row, `selectAgain`) is told again.
//
// Threads: the main thread.
#pragma once

#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Interface/Symbol.h"
#include "Platform/Runtime/Object/Ref.h"

#include <QTableView>

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#pragma GCC visibility push(default)

class NSString;
class NSTableView;
class NSTableModel;
class NSTimer;
class [[gnu::visibility("hidden")]] TableReload;
class TableRowDelegate;

/// A column of a table, known by its identifier; the heading is what people see.
struct NSTableColumn {
    QString identifier;
    QString heading;
};

/// How a row is drawn and spoken.
struct NSTableRow {
    QString name;                 ///< drawn when the cell's own text is blank
    bool isNameMuted = false;     ///< drawn in the colour of the detail
    QString detail;               ///< the line beneath the name
    std::optional<Symbol> symbol; ///< before the texts
    QString more;                 ///< only in the tool tip and to screen readers

    bool operator==(const NSTableRow &) const = default;
};

/// What a table shows.
class NSTableViewDataSource {
public:
    virtual ~NSTableViewDataSource() = default;
    virtual NSInteger numberOfRowsInTableView(NSTableView &table) = 0;
    /// The text of a cell, or none.
    virtual Ref<NSString> tableView(NSTableView &table, const NSTableColumn *column, NSInteger row) = 0;
    /// What the row shows besides that text.
    virtual NSTableRow lookOfRow(NSTableView &, NSInteger) { return {}; }
    /// Whether typing `typed`, which is never empty, selects the row: by default, whether the row's name
    /// begins with it.
    virtual bool isTypeSelectMatch(NSTableView &table, NSInteger row, const Ref<NSString> &typed);
};

/// Told of what the user does with a table.
class NSTableViewDelegate {
public:
    virtual ~NSTableViewDelegate() = default;
    virtual void tableViewSelectionDidChange(NSTableView &table) = 0;
};

class NSTableView final : public QTableView {
    Q_OBJECT
    Q_PROPERTY(QString columnIdentifier READ columnIdentifier WRITE setColumnIdentifier)
    Q_PROPERTY(QString placeholderText READ placeholderText WRITE setPlaceholderText)
public:
    /// The least time between two reloads.
    static constexpr std::chrono::milliseconds reloadPace{250};
    /// The longest that a reload waits beyond that for another timer to wake the thread.
    static constexpr std::chrono::milliseconds reloadPatience{2000};
    /// How long no key has to be pressed before a selection by the keyboard is told.
    static constexpr std::chrono::milliseconds keyRest{250};

    explicit NSTableView(QWidget *parent = nullptr);
    ~NSTableView() override;

    /// Neither is owned.
    void setDataSource(NSTableViewDataSource *source);
    void setDelegate(NSTableViewDelegate *delegate) { delegate_ = delegate; }

    /// The identifier of the table's one column.
    QString columnIdentifier() const { return column_.identifier; }
    void setColumnIdentifier(const QString &identifier) { column_.identifier = identifier; }
    /// The column of that identifier, or null.
    NSTableColumn *tableColumnWithIdentifier(const QString &identifier);
    void setHeading(const QString &heading);

    /// The text of a table without rows.
    QString placeholderText() const { return placeholderText_; }
    void setPlaceholderText(const QString &text);
    /// Room for the text of a table without rows, and the heading.
    QSize minimumSizeHint() const override;

    /// Asks for the number of rows, and paints if a visible cell changed, when the table is next painted or
    /// when the pace and the patience above are over.
    void reloadData();
    /// The same without the pace, for a data source that knows that its rows changed.
    void reloadAtOnce();
    /// −1 when no row is selected.
    NSInteger selectedRow() const;
    void selectRow(int row);

    /// Tells the delegate of the selected row once more; does nothing without one.
    void selectAgain();
    /// A selection that waits for the keys to rest is told soon. Returns whether any selection is still to be
    /// told.
    bool tellWaitingSelection();
    /// Shows only the rows that `isShown` accepts, or all of them without one. The selection stays.
    void setFilter(std::function<bool(int row)> isShown);
    /// The first row that is shown, or −1.
    int firstShownRow() const;

    /// A cell's text, from the data source.
    QString textAt(int row) const;
    /// The look of the row, whose name is the cell's text unless that is blank.
    NSTableRow lookOf(int row) const;
    const NSTableColumn &column() const { return column_; }
    bool isTypeSelectMatch(int row, const QString &typed) const;

    void keyboardSearch(const QString &text) override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;

private:
    void fitRows();
    int placeholderMargin() const;
    friend class TableReload;
    void arrangeReload();
    void reloadIfSeen();
    bool reloadIsDue() const;
    void reloadNow();
    std::vector<NSTableRow> visibleRows() const;
    void applyFilter(int firstRow);
    void paintPlaceholder();
    void tellSoon();
    void tellAfterRest();
    void tell();
    bool isTyping() const;

    NSTableModel *model_;
    TableRowDelegate *rows_;
    NSTableColumn column_;
    QString placeholderText_;
    NSTableViewDataSource *source_ = nullptr;
    NSTableViewDelegate *delegate_ = nullptr;
    bool reloadWanted_ = false;
    dispatch::Instant nextReload_;
    Ref<NSTimer> reloadTimer_;
    std::vector<NSTableRow> shown_;
    std::function<bool(int)> filter_;

    bool keyIsDown_ = false;                 // a selection that changes now is made by the keyboard
    bool pressedAgain_ = false;              // the mouse button, on the row that was already selected
    std::optional<dispatch::Instant> typed_; // when the latest letter was typed
    dispatch::Alarm rest_;
    bool resting_ = false, telling_ = false;
};

#pragma GCC visibility pop
