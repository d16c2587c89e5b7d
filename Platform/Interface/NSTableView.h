// A table that asks a data source for what it shows, a cell at a time.
//
// `reloadData` keeps selection and scroll position; a selected row that is there no more leaves no row
// selected. It has the data source asked for its number of rows once, when the table is next painted: so a
// data source that answers by asking for the next reload keeps the table current at a small cost, paced by
// `reloadPace`, and only while the table can be seen.
//
// Threads: the main thread.
#pragma once

#include "Platform/Dispatch/Clock.h"
#include "Platform/Runtime/Ref.h"

#include <QTableView>

#include <chrono>

class NSString;
class NSTableView;
class NSTableModel;

/// A column of a table, known by its identifier; the heading is what people see.
struct NSTableColumn {
    QString identifier;
    QString heading;
};

/// What a table shows.
class NSTableViewDataSource {
public:
    virtual ~NSTableViewDataSource() = default;
    virtual NSInteger numberOfRowsInTableView(NSTableView &table) = 0;
    /// The text of a cell, or none.
    virtual Ref<NSString> tableView(NSTableView &table, const NSTableColumn *column, NSInteger row) = 0;
};

/// Is told what the user does with a table.
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
    /// No two reloads are painted within this time.
    static constexpr std::chrono::milliseconds reloadPace{250};

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

    /// What an empty table says.
    QString placeholderText() const { return placeholderText_; }
    void setPlaceholderText(const QString &text);
    /// Room for a few rows, and for what the table says when it is empty.
    QSize minimumSizeHint() const override;

    /// Has the number of rows asked and the visible cells compared when the table is next painted.
    void reloadData();
    /// −1 when no row is selected.
    NSInteger selectedRow() const;

    /// A cell's text, from the data source.
    QString textAt(int row) const;
    const NSTableColumn &column() const { return column_; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;

private:
    void fitRows();
    int placeholderMargin() const;
    void requestPaint();
    void reloadNow();
    QStringList visibleTexts() const;
    void paintPlaceholder();

    NSTableModel *model_;
    NSTableColumn column_;
    QString placeholderText_;
    NSTableViewDataSource *source_ = nullptr;
    NSTableViewDelegate *delegate_ = nullptr;
    bool reloadWanted_ = false;
    dispatch::Instant nextReload_;
    dispatch::Alarm alarm_;
    QStringList shown_;
};
