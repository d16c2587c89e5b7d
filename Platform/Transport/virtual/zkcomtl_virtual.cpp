// libzkcomtl.so.1 over virtual printers: the files of the folder that ZKCOMTL_PRINTERS names are the
// printers.
#include "Platform/Transport/virtual/FolderPrinters.h"

// Not destroyed: another thread may still call when the library ends.
transport::Printers &transport::libraryPrinters() {
    static auto *const printers = new FolderPrinters;
    return *printers;
}
