// The printers of the virtual libzkcomtl.so.1: files of the folder that ZKCOMTL_PRINTERS names.
#include "Platform/Transport/virtual/FolderPrinters.h"

// Never destroyed, as another thread may still call while the library is unloaded.
transport::Printers &transport::libraryPrinters() {
    static auto *const printers = new FolderPrinters;
    return *printers;
}
