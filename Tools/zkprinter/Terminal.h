// Text for people: tables that line up whatever the script, colour on terminals only, foreign text made
// harmless.
#pragma once

#include <string>
#include <string_view>
#include <vector>

enum class Style { plain, heading, good, bad };

/// The text in the style, when standard output is a terminal that wants colour (see NO_COLOR).
std::string styled(std::string_view text, Style style);

/// How many columns of a terminal the UTF-8 text takes.
std::size_t displayWidth(std::string_view utf8);

/// Prints rows in columns, the first row as the heading. Control characters are escaped.
void printTable(const std::vector<std::vector<std::string>> &rows);

/// Prints one line.
void printLine(std::string_view line);

/// Shows a line that does not stay on the terminal of standard error, in the place of the one before; none
/// for an empty text. Nothing on a terminal that cannot take it back or is stopped, or when there is none.
/// Does not wait for the terminal. Any thread, one call at a time.
void showPassing(const std::string &line);
/// Takes it back, if there is one, without waiting for the terminal. Any thread.
void erasePassing();
