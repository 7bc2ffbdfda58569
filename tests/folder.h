/// Folders and files of the tests' own, and texts made from others.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

/// A folder of one test's own, removed when it goes.
struct Folder {
    Folder() { EXPECT_NE(mkdtemp(path.data()), nullptr); }
    Folder(const Folder&) = delete;
    ~Folder() { std::filesystem::remove_all(path); }
    std::string operator/(const std::string& name) const { return path + "/" + name; }
    /// Writes the file `name` and gives its path.
    std::string put(const std::string& name, const std::string& bytes) const {
        std::string file = *this / name;
        std::filesystem::create_directories(std::filesystem::path(file).parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        return file;
    }

    std::string path = testing::TempDir() + "vrrp-valid-XXXXXX";
};

/// Why `work` cannot be done; empty when it can.
template <typename Work>
std::string refusal_of(Work work) {
    try {
        work();
        return "";
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

inline std::string content_of(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline std::string replaced(std::string text, const std::string& word, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; at += by.size()) {
        text.replace(at, word.size(), by);
    }
    return text;
}
