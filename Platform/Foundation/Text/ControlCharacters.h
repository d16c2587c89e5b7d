// Text from outside, made harmless for logs and terminals. Any thread.
#pragma once

#include <string>
#include <string_view>

/// The text with every control character, line separator and mark that changes the direction of text escaped:
/// `\n`, `\r` and `\t` as here, others as `\u001B`. What is not UTF-8 stays.
std::string escapedControlCharacters(std::string_view utf8);
/// Appends that.
void appendWithEscapedControlCharacters(std::string &out, std::string_view utf8);
