// The table: what it asks for and when, and what stays through reloads.
#include "Platform/Interface/NSTableView.h"

#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Interface/NSApplication.h"
#include "Platform/Interface/QtText.h"
#include "Tests/Support/QtTesting.h"

#include <QScrollBar>
#include <QTest>

namespace {

/// Rows "0", "1" … under a prefix; a reload is asked for with every count, as the main view does.
class Rows : public NSTableViewDataSource, public NSTableViewDelegate {
public:
    NSInteger numberOfRowsInTableView(NSTableView &table) override {
        ++counts;
        dispatch::mainQueue().async([&table] { table.reloadData(); });
        return rows;
    }
    Ref<NSString> tableView(NSTableView &table, const NSTableColumn *column, NSInteger row) override {
        EXPECT_EQ(column, table.tableColumnWithIdentifier(QStringLiteral("NAME")));
        EXPECT_LT(row, rows);
        ++texts;
        asked.insert(row);
        return toNSString(prefix + QString::number(row));
    }
    void tableViewSelectionDidChange(NSTableView &table) override {
        selections.push_back(table.selectedRow());
        if (onSelection)
            onSelection();
    }

    NSInteger rows = 0;
    QString prefix = QStringLiteral("Row ");
    int counts = 0, texts = 0;
    std::set<NSInteger> asked;
    std::vector<NSInteger> selections;
    std::function<void()> onSelection;
};

/// Counts how often a widget is painted.
class Paints : public QObject {
public:
    explicit Paints(QWidget &widget) { widget.installEventFilter(this); }
    int count = 0;
    bool eventFilter(QObject *, QEvent *event) override {
        count += event->type() == QEvent::Paint;
        return false;
    }
};

class NSTableViewTest : public testing::Test {
protected:
    using Selections = std::vector<NSInteger>;

    void open(NSInteger count) {
        rows.rows = count;
        table.setColumnIdentifier(QStringLiteral("NAME"));
        table.setPlaceholderText(QStringLiteral("Nothing"));
        table.resize(300, 300);
        table.setDelegate(&rows);
        table.setDataSource(&rows);
        table.show();
        reload();
    }
    /// Waits for the next count of rows.
    void reload() {
        const int before = rows.counts;
        qt.advance(NSTableView::reloadPace);
        EXPECT_TRUE(QtTesting::eventually([&] { return rows.counts > before; }));
        QtTesting::settle();
    }
    QRect placeOf(NSInteger row) const {
        return table.visualRect(table.model()->index(static_cast<int>(row), 0));
    }
    bool isInView(NSInteger row) const { return table.viewport()->rect().contains(placeOf(row)); }
    void click(NSInteger row, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(table.viewport(), Qt::LeftButton, modifiers, placeOf(row).center());
        QtTesting::settle();
    }
    int visibleRows() const { return 1 + table.viewport()->height() / table.rowHeight(0); }
    void press(Qt::Key key) { QTest::keyClick(&table, key); }

    QtTesting qt;
    NSApplication application;
    Rows rows;
    NSTableView table;
};

} // namespace

TEST_F(NSTableViewTest, asksForVisibleRowsOnly) {
    open(10000);
    EXPECT_EQ(table.model()->rowCount(), 10000);
    EXPECT_EQ(*rows.asked.rbegin() + 1, static_cast<NSInteger>(rows.asked.size()));
    EXPECT_LE(*rows.asked.rbegin(), visibleRows());
    table.verticalScrollBar()->setValue(5000 * table.rowHeight(0));
    rows.asked.clear();
    rows.texts = 0;
    for (int i = 0; i < 10; ++i)
        reload();
    EXPECT_GE(*rows.asked.begin(), 4999);
    EXPECT_LE(*rows.asked.rbegin(), 5000 + visibleRows());
    EXPECT_LE(rows.texts, 15 * (visibleRows() + 1));
    rows.texts = 0;
    rows.prefix = QStringLiteral("Other ");
    reload();
    EXPECT_TRUE(QtTesting::eventually([&] { return rows.texts > visibleRows(); }))
        << "what changed is painted again";
}

TEST_F(NSTableViewTest, reloadsAtItsPaceWhileItIsSeen) {
    open(3);
    const int before = rows.counts;
    QtTesting::settle();
    EXPECT_EQ(rows.counts, before) << "not before the pace says so";
    EXPECT_EQ(NSRunLoop::mainRunLoop()->nextInstant(NSDefaultRunLoopMode),
              qt.clock.now() + NSTableView::reloadPace + NSTableView::reloadPatience)
        << "nor is the thread woken for it before that";
    const Paints paints(*table.viewport());
    for (int i = 0; i < 20; ++i) {
        reload();
        table.reloadData(); // merged with the one under way
        table.reloadData();
    }
    EXPECT_EQ(rows.counts, before + 20);
    EXPECT_EQ(paints.count, 0) << "nothing has changed";

    table.hide();
    for (int i = 0; i < 20; ++i)
        qt.elapse(NSTableView::reloadPace);
    EXPECT_EQ(rows.counts, before + 20);
    table.show();
    EXPECT_TRUE(QtTesting::eventually([&] { return rows.counts == before + 21; })) << "at once";
    reload();
    EXPECT_EQ(rows.counts, before + 22);
    table.setDataSource(nullptr);
    qt.advance(NSTableView::reloadPace);
    EXPECT_TRUE(QtTesting::eventually([&] { return table.model()->rowCount() == 0; }));
}

TEST_F(NSTableViewTest, keepsSelectionAndPositionWhileRowsComeAndGo) {
    open(500);
    table.selectRow(200);
    table.verticalScrollBar()->setValue(198 * table.rowHeight(0));
    const int position = table.verticalScrollBar()->value();
    for (const NSInteger count : {500, 501, 9999, 300, 220, 500}) {
        rows.rows = count;
        reload();
        EXPECT_EQ(table.model()->rowCount(), count);
        EXPECT_EQ(table.selectedRow(), 200);
        EXPECT_EQ(table.verticalScrollBar()->value(), position);
    }
    QtTesting::settle();
    EXPECT_EQ(rows.selections, Selections{200}) << "nobody is told of a change that is none";

    rows.rows = 200;
    reload();
    EXPECT_EQ(table.selectedRow(), -1) << "no other row takes the place of the one that went";
    EXPECT_EQ(rows.selections, (Selections{200, -1}));
    rows.rows = 0;
    reload();
    rows.rows = -1;
    reload();
    EXPECT_EQ(table.model()->rowCount(), 0);
}

TEST_F(NSTableViewTest, isWorkedByTheKeyboard) {
    open(0);
    press(Qt::Key_Down);
    EXPECT_EQ(table.selectedRow(), -1);
    rows.rows = 4;
    reload();
    table.setFocus();
    const struct {
        Qt::Key key;
        NSInteger row;
    } steps[] = {{Qt::Key_Down, 0},     {Qt::Key_Down, 1}, {Qt::Key_Up, 0},     {Qt::Key_Up, 0},
                 {Qt::Key_PageDown, 3}, {Qt::Key_Down, 3}, {Qt::Key_PageUp, 0}, {Qt::Key_Tab, 0},
                 {Qt::Key_End, 3},      {Qt::Key_Home, 0}, {Qt::Key_End, 3}};
    for (const auto &[key, row] : steps) {
        press(key);
        EXPECT_EQ(table.selectedRow(), row) << key << ": selected at once";
        qt.elapse(NSTableView::keyRest - 1ms);
    }
    EXPECT_EQ(rows.selections, Selections{}) << "the keys do not rest";
    qt.elapse(1ms);
    EXPECT_EQ(rows.selections, Selections{3});
    press(Qt::Key_Home);
    press(Qt::Key_Down);
    table.clearFocus();
    QtTesting::settle();
    EXPECT_EQ(rows.selections, (Selections{3, 1})) << "who leaves the list has chosen";
    qt.elapse(NSTableView::keyRest);
    table.setFocus();
    qt.elapse(1s); // so that a space is no part of a name
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        press(key);
        QtTesting::settle();
    }
    EXPECT_EQ(rows.selections, (Selections{3, 1, 1, 1, 1})) << "told once more";
    rows.selections.clear();
    click(0);
    EXPECT_EQ(rows.selections, Selections{0}) << "at once, and once";
    click(0);
    EXPECT_EQ(rows.selections, (Selections{0, 0}));
    click(0, Qt::ControlModifier);
    EXPECT_EQ(table.selectedRow(), -1);
    press(Qt::Key_Up);
    EXPECT_EQ(table.selectedRow(), 0) << "the row that has the focus, not the one above it";
}

TEST_F(NSTableViewTest, tellsASelectionThatCanBeSeen) {
    open(500);
    rows.onSelection = [&] { EXPECT_TRUE(isInView(table.selectedRow())); };
    for (const int row : {400, 0, 499}) {
        table.selectRow(row);
        table.verticalScrollBar()->setValue(200);
        QtTesting::settle();
        EXPECT_EQ(rows.selections.back(), row);
    }
}

TEST_F(NSTableViewTest, keepsTheSelectedRowInViewWithLessRoom) {
    open(20);
    const int last = visibleRows() - 3;
    table.selectRow(last);
    for (const int height : {300, 150}) {
        table.resize(300, height);
        QtTesting::settle();
        EXPECT_TRUE(isInView(last)) << height;
    }
    table.verticalScrollBar()->setValue(table.verticalScrollBar()->maximum());
    table.resize(300, 140);
    QtTesting::settle();
    EXPECT_FALSE(isInView(last)) << "who looks elsewhere is left there";
}

TEST_F(NSTableViewTest, canBeNarrowed) {
    open(30);
    table.selectRow(4);
    table.setFilter([](int row) { return row % 10 == 7; });
    EXPECT_EQ(table.firstShownRow(), 7);
    EXPECT_EQ(table.selectedRow(), 4) << "selections stay";
    table.clearSelection();
    table.setFocus();
    for (const NSInteger row : {7, 17, 27, 27}) {
        press(Qt::Key_Down);
        EXPECT_EQ(table.selectedRow(), row);
    }
    rows.rows = 40;
    reload();
    press(Qt::Key_Down);
    EXPECT_EQ(table.selectedRow(), 37) << "rows that come are narrowed, too";
    table.setFilter([](int) { return false; });
    EXPECT_EQ(table.firstShownRow(), -1);
    table.setFilter(nullptr);
    EXPECT_EQ(table.firstShownRow(), 0);
}

TEST_F(NSTableViewTest, isSearchedByTyping) {
    open(30);
    table.setFocus();
    const int interval = QApplication::keyboardInputInterval();
    QApplication::setKeyboardInputInterval(3'600'000); // however slow the machine is
    QTest::keyClicks(&table, QStringLiteral("row 2"));
    EXPECT_EQ(table.selectedRow(), 2);
    QTest::keyClicks(&table, QStringLiteral("1"));
    EXPECT_EQ(table.selectedRow(), 21);
    table.keyboardSearch(QString()); // begins anew
    table.setFilter([](int row) { return row % 10 == 7; });
    QTest::keyClicks(&table, QStringLiteral("ROW 2"));
    EXPECT_EQ(table.selectedRow(), 27) << "none that is not shown";
    QTest::keyClicks(&table, QStringLiteral("x"));
    EXPECT_EQ(table.selectedRow(), 27);
    QApplication::setKeyboardInputInterval(interval);
}

TEST_F(NSTableViewTest, showsTextsAsTheyAre) {
    open(1);
    EXPECT_EQ(table.tableColumnWithIdentifier(QStringLiteral("OTHER")), nullptr);
    table.setHeading(QStringLiteral("Name"));
    EXPECT_EQ(table.model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Name"));
    rows.prefix = QStringLiteral("<b>A & B</b> ");
    const QModelIndex cell = table.model()->index(0, 0);
    EXPECT_EQ(cell.data().toString(), QStringLiteral("<b>A & B</b> 0"));
    EXPECT_EQ(cell.data(Qt::ToolTipRole), QVariant()) << "the cell tells all";
    table.resize(120, 300);
    QtTesting::settle();
    EXPECT_EQ(cell.data(Qt::ToolTipRole).toString(),
              QStringLiteral("<div dir=\"ltr\">%1</div>")
                  .arg(isolated(QStringLiteral("&lt;b&gt;A &amp; B&lt;/b&gt; 0"))));
    for (const int points : {9, 30, 12}) {
        QFont font = table.font();
        font.setPointSize(points);
        table.setFont(font);
        EXPECT_GE(table.rowHeight(0), 1.9 * table.fontMetrics().height());
        EXPECT_LE(table.rowHeight(0), std::max(44, 3 * table.fontMetrics().height()));
    }
}
