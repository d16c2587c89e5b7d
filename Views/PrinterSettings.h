// Opens the desktop's printer settings, where there are any.
//
// Threads: the main thread.
#pragma once

namespace PrinterSettings {

/// Whether there is a program to open.
bool exist();
/// Starts it as a detached process. Does nothing when there is none.
void open();

} // namespace PrinterSettings
