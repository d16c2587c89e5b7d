// Tables of texts beside the tests: one row per line, " => " between its two cells. Control characters are
// shown by their pictures: "␊" ends a line, "␠" is a blank. Lines that begin with "//" are remarks.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

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
