// Standard output: collected, then written as a whole, with errors reported.
//
// Threads: any. Writes to the descriptor, not a stream, so that nothing is left in a buffer when the process
// ends.
#pragma once

#include <string_view>

/// Adds the text to what is to be written.
void print(std::string_view text);

/// Writes what was printed. Throws a Failure (`unwritable`) when standard output does not take all of it; the
/// rest is dropped.
void deliver();

/// Drops what was printed, and from now on what other threads print: the calling thread is about to end the
/// program.
void takeOutputOver();
