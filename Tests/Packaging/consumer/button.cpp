// An interface class, which the library has from Qt's compiler.
#include <Platform/Interface/NSPopUpButton.h>

#include <QApplication>

#include <cstdio>

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    const NSPopUpButton button;
    std::puts(button.metaObject()->className());
}
