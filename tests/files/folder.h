// A folder for the files of one test.
#pragma once

#include "files/paths.h"
#include "files/saved_file.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace pelmora_test {

// A new empty folder, whose path has no "." in it; deleted with its contents at the end.
class Folder {
  public:
    Folder() {
        std::random_device number;
        do {
            path_ = std::filesystem::temp_directory_path() /
                    ("pelmora test " + std::to_string(number()));
        } while (!std::filesystem::create_directory(path_));
    }
    ~Folder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string path() const { return pelmora::name_of(path_); }
    std::string path(const std::string& name) const {
        return pelmora::name_of(path_ / pelmora::path_of(name));
    }

    // How many files and folders are in it.
    int count() const {
        return static_cast<int>(std::distance(std::filesystem::directory_iterator(path_), {}));
    }

  private:
    std::filesystem::path path_;
};

inline std::string content_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void write_file(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

// Saves a text as the program's commands do it; whether that succeeded.
inline bool save(const std::string& path, const std::string& text) {
    pelmora::SavedFile file(path);
    if (file.stream() == nullptr) {
        return false;
    }
    std::fputs(text.c_str(), file.stream()); // commit() reports failures
    return file.commit();
}

} // namespace pelmora_test
