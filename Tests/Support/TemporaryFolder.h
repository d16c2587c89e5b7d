// A folder of printer files that lives as long as one test.
#pragma once

#include "Tests/Support/Testing.h"

#include <filesystem>
#include <fstream>

class TemporaryFolder : NoCopies {
public:
    TemporaryFolder() : path_(testing::TempDir() + "printers.XXXXXX") {
        if (::mkdtemp(path_.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }

    std::filesystem::path path() const { return path_; }
    std::filesystem::path file(const std::string &name) const { return path() / name; }

    /// In a folder of its own, too, as in "a/b.json".
    std::filesystem::path put(const std::string &name, const std::string &text) const {
        std::filesystem::create_directories(file(name).parent_path());
        std::ofstream(file(name), std::ios::binary) << text;
        return file(name);
    }

    std::string get(const std::string &name) const {
        std::ifstream stream(file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

private:
    std::string path_;
};
