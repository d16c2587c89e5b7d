// Text for people: tables whose columns line up in every script, and colours on terminals only.
#pragma once

#include <string>
#include <string_view>
#include <vector>

enum class Style { plain, heading, good, bad };

/// The text in the style if standard output is a terminal with colours and NO_COLOR is not set; otherwise the
/// text itself.
std::string styled(std::string_view text, Style style);

/// How many columns the UTF-8 text takes on a terminal.
std::size_t displayWidth(std::string_view utf8);

/// Prints rows in columns, the first row as the heading. Control characters are escaped.
void printTable(const std::vector<std::vector<std::string>> &rows);

/// Prints the text and a line feed. Escapes nothing.
void printLine(std::string_view line);

/// Shows a temporary line on the terminal of standard error, instead of the one before; an empty text erases
/// it. Does nothing without a terminal, or on one that cannot erase or is stopped; never waits for the
/// terminal. Any thread, one call at a time.
void showPassing(const std::string &line);
/// Erases the temporary line, if there is one, without waiting for the terminal. Any thread.
void erasePassing();
