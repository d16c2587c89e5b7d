// Tables of texts beside the tests: one row per line, " => " between its two cells. Control characters are
// shown by their pictures: "␊" ends a line, "␠" is a blank. Lines that begin with "//" are remarks.
#pragma once

#include "Tests/Support/Testing.h"

#include <fstream>

inline std::vector<std::pair<std::string, std::string>> rowsOf(const std::string &path) {
    std::vector<std::pair<std::string, std::string>> rows;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        for (std::size_t at; (at = line.find("\xE2\x90")) != line.npos;) // U+2400 and so on
            line.replace(at, 3, 1, static_cast<char>(line[at + 2] & 0x3F));
        const std::size_t between = line.find("=>");
        if (line.empty() || line.starts_with("//"))
            continue;
        if (between == line.npos)
            ADD_FAILURE() << path << " has a line that is no row: " << line;
        else
            rows.emplace_back(line.substr(0, between ? between - 1 : 0),
                              line.substr(std::min(between + 3, line.size())));
    }
    EXPECT_FALSE(rows.empty()) << path;
    return rows;
}

using TextOperations = std::map<std::string, std::function<std::string(const std::string &)>>;

/// Checks a table whose rows read "operation text => what it gives".
inline void expectTable(const std::string &path, const TextOperations &operations) {
    for (const auto &[row, expected] : rowsOf(path)) {
        const std::size_t end = std::min(row.find(' '), row.size());
        const std::string given = row.substr(std::min(end + 1, row.size()));
        EXPECT_EQ(operations.at(row.substr(0, end))(given), expected) << row;
    }
}
