// What the help menu offers.
//
// Threads: the main thread.
#pragma once

class QWidget;

namespace Help {

/// Shows the program's name, version and licence, and what it runs on.
void showAbout(QWidget &window);

/// Has the report for the support made and puts it on the clipboard; says so, or that it failed. Returns at
/// once.
void copyDiagnostics(QWidget &window);

} // namespace Help
