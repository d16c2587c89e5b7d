// The five functions of zkcomtl.h inside the process: nothing waits. One printer at a time can be open. It
// answers every request with the threshold 5.
//
// One thread at a time.
#pragma once

#include <cstddef>

namespace instant {

/// How many printers are attached from now on, all of one model, with serial numbers "SN0000", "SN0001", ….
void attachPrinters(std::size_t count);

} // namespace instant
