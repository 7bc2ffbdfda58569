/// Folders and files of the tests' own, and texts made from others.
#pragma once

#include <gtest/gtest.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// Where tests write: in memory, where that holds extended attributes, since each commit waits
/// twice for a disk.
inline std::string place_for_folders() {
    const std::string in_memory = "/dev/shm/";
    const bool is_usable = access(in_memory.c_str(), W_OK) == 0 &&
                           getxattr(in_memory.c_str(), "user.any", nullptr, 0) < 0 &&
                           errno == ENODATA;
    return is_usable ? in_memory : testing::TempDir();
}

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

    std::string path = place_for_folders() + "vrrp-valid-XXXXXX";
};

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
