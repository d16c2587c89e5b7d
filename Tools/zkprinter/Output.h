// What the program says on standard output: collected, then written as a whole, and whether that worked is
// checked.
//
// Threads: any. Descriptors, not streams, so that nothing is left in a buffer when the process ends.
#pragma once

#include <string_view>

/// Adds to what is to be said.
void print(std::string_view text);

/// Writes what was printed. Fails when standard output does not take it all; what it did not take is dropped.
void deliver();

/// Drops what was printed, and what any other thread goes on to print: this one ends the program.
void takeOutputOver();
