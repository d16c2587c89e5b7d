// The process entry of the window.
#include "Platform/Interface/NSApplication.h"

int main(int argc, char **argv) {
    return NSApplicationMain(argc, argv);
}
