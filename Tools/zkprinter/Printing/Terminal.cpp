#include "Tools/zkprinter/Printing/Terminal.h"

#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Tools/zkprinter/Printing/Output.h"

#include <algorithm>
#include <atomic>
#include <clocale>
#include <cstdlib>
#include <cwchar>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

bool isSet(const char *variable) {
    const char *const value = std::getenv(variable);
    return value && *value;
}

bool understandsEscapes(int descriptor) {
    return isatty(descriptor) && isSet("TERM") && std::string_view(std::getenv("TERM")) != "dumb";
}

bool wantsColour() {
    static const bool wanted = understandsEscapes(STDOUT_FILENO) && !isSet("NO_COLOR");
    return wanted;
}

/// Moves to the beginning of the line and erases it.
constexpr std::string_view freshLine = "\r\x1B[K";

std::atomic<bool> passing = false;

/// Writes unless the terminal is stopped or gone.
void toTerminal(std::string_view text) {
    pollfd terminal{.fd = STDERR_FILENO, .events = POLLOUT, .revents = 0};
    if (poll(&terminal, 1, 0) == 1 && (terminal.revents & POLLOUT) != 0) [[maybe_unused]]
        const ssize_t count = write(STDERR_FILENO, text.data(), text.size());
}

std::string cutTo(std::size_t columns, std::string text) {
    if (displayWidth(text) <= columns)
        return text;
    while (!text.empty() && displayWidth(text) + 1 > columns) {
        while (text.size() > 1 && (static_cast<unsigned char>(text.back()) & 0xC0) == 0x80)
            text.pop_back();
        text.pop_back();
    }
    return text + "…";
}

const char *codeOf(Style style) {
    switch (style) {
    case Style::heading:
        return "\x1B[1m";
    case Style::good:
        return "\x1B[32m";
    case Style::bad:
        return "\x1B[31m";
    case Style::plain:
        break;
    }
    return "";
}

/// Switches the thread to a UTF-8 locale: widths must not depend on the user's.
class UnicodeLocale {
public:
    UnicodeLocale() : locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)), previous_(uselocale(locale_)) {}
    UnicodeLocale(const UnicodeLocale &) = delete;
    UnicodeLocale &operator=(const UnicodeLocale &) = delete;
    ~UnicodeLocale() {
        uselocale(previous_);
        if (locale_)
            freelocale(locale_);
    }

private:
    locale_t locale_, previous_;
};

} // namespace

std::string styled(std::string_view text, Style style) {
    return style == Style::plain || !wantsColour() ? std::string(text)
                                                   : codeOf(style) + std::string(text) + "\x1B[0m";
}

std::size_t displayWidth(std::string_view utf8) {
    const UnicodeLocale scope;
    std::mbstate_t state{};
    std::size_t width = 0;
    for (std::size_t at = 0; at < utf8.size();) {
        wchar_t character = 0;
        const std::size_t length = std::mbrtowc(&character, utf8.data() + at, utf8.size() - at, &state);
        if (length == 0 || length > utf8.size() - at)
            return width + (utf8.size() - at);
        width += static_cast<std::size_t>(std::max(wcwidth(character), 0));
        at += length;
    }
    return width;
}

void printTable(const std::vector<std::vector<std::string>> &rows) {
    std::vector<std::vector<std::string>> cells;
    std::vector<std::size_t> widths;
    for (const auto &row : rows) {
        cells.emplace_back();
        for (std::size_t column = 0; column < row.size(); ++column) {
            cells.back().push_back(escapedControlCharacters(row[column]));
            widths.resize(std::max(widths.size(), column + 1));
            widths[column] = std::max(widths[column], displayWidth(cells.back().back()));
        }
    }
    for (std::size_t row = 0; row < cells.size(); ++row) {
        std::string line;
        for (std::size_t column = 0; column < cells[row].size(); ++column) {
            line += cells[row][column];
            if (column + 1 < cells[row].size())
                line.append(widths[column] - displayWidth(cells[row][column]) + 2, ' ');
        }
        printLine(styled(line, row == 0 ? Style::heading : Style::plain));
    }
}

void printLine(std::string_view line) {
    print(std::string(line) + "\n");
}

void showPassing(const std::string &line) {
    static const bool possible = understandsEscapes(STDERR_FILENO);
    if (!possible || line.empty())
        return erasePassing();
    winsize size{};
    const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
    passing = true;
    toTerminal(std::string(freshLine) + cutTo(known ? size.ws_col - 1U : 79U, line));
}

void erasePassing() {
    if (passing.exchange(false))
        toTerminal(freshLine);
}
