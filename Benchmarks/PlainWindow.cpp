// A plain Qt window with a table: the floor for what our window costs.
#include <QApplication>
#include <QMainWindow>
#include <QStandardItemModel>
#include <QTableView>

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    QMainWindow window;
    auto *table = new QTableView;
    QStandardItemModel model(5, 1);
    table->setModel(&model);
    window.setCentralWidget(table);
    window.resize(760, 460);
    window.show();
    return QApplication::exec();
}
