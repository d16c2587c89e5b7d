// Interface descriptions: outlets, waking, words, and views that fill their parent.
#include "Platform/Interface/Outlet.h"

#include "Platform/Interface/FillingView.h"
#include "Tests/Support/QtTesting.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>

namespace {

class Sleeper : public QWidget, public NSNibAwaking {
public:
    using QWidget::QWidget;
    void awakeFromNib() override {
        ++woken;
        if (becomesBusy)
            made = new Sleeper(this);
    }
    int woken = 0;
    bool becomesBusy = false;
    Sleeper *made = nullptr;
};

template <class View>
View *named(View *view, const char *name) {
    view->setObjectName(QLatin1String(name));
    return view;
}

} // namespace

TEST(Outlet, isFoundByNameAndType) {
    QtTesting qt;
    QWidget root;
    auto *const label = named(new QLabel(&root), "tips");
    auto *const deep = named(new QPushButton(label), "confirm");
    EXPECT_EQ(outlet<QLabel>(root, "tips"), label);
    EXPECT_EQ(outlet<QPushButton>(root, "confirm"), deep);
    EXPECT_DEATH(outlet<QLabel>(root, "confirm"), "no \"confirm\" of type QLabel");
    EXPECT_DEATH(outlet<QLabel>(root, "absent"), "no \"absent\" of type QLabel");
}

TEST(Outlet, everybodyWakesOnce) {
    QtTesting qt;
    Sleeper root;
    auto *const busy = new Sleeper(&root);
    auto *const deep = new Sleeper(new QWidget(busy));
    busy->becomesBusy = true;
    wakeObjects(root);
    for (const Sleeper *sleeper : {&root, busy, deep})
        EXPECT_EQ(sleeper->woken, 1);
    ASSERT_NE(busy->made, nullptr);
    EXPECT_EQ(busy->made->woken, 0) << "made while others woke";
}

TEST(FillingView, isFilledByWhateverComes) {
    QtTesting qt;
    FillingView parent;
    auto *const first = new QLabel(&parent);
    parent.resize(200, 100);
    parent.show();
    QtTesting::settle();
    EXPECT_EQ(first->geometry(), QRect(0, 0, 200, 100));

    QWidget second;
    QDialog window(&parent);
    for (int turn = 0; turn < 3; ++turn) { // also one that was here before
        second.setParent(&parent);
        second.show();
        QtTesting::settle();
        EXPECT_EQ(second.geometry(), QRect(0, 0, 200, 100)) << turn;
        EXPECT_EQ(first->geometry(), QRect(0, 0, 200, 100));
        second.setParent(nullptr);
        second.resize(10, 10);
        parent.resize(200 + turn, 100);
        QtTesting::settle();
        parent.resize(200, 100);
        EXPECT_EQ(second.size(), QSize(10, 10)) << "who left is left alone";
    }
    window.show();
    QtTesting::settle();
    EXPECT_NE(window.size(), parent.size()) << "a window is not a view of it";
}
