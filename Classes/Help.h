// The commands of the help menu.
//
// Threads: the main thread.
#pragma once

class QWidget;

namespace Help {

/// Shows the program's name, version and licence, and what it runs on.
void showAbout(QWidget &window);

/// Runs `zkprinter diagnose` and puts its report on the clipboard; a message box says so, or that it failed.
/// Returns at once.
void copyDiagnostics(QWidget &window);

} // namespace Help
