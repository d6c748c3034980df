// Writes files so that an old file goes only when the new one is complete.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

namespace pelmora {

// The end of a line in every file that the program writes, on every system: its streams are binary.
inline constexpr char kFileLineEnd[] = "\r\n";

// The first line of turtle and population files, which readers skip.
inline constexpr int kFileVersion = 1;

// A file that is being saved. The text goes to a new file beside the old one, which takes its place
// and its permissions in commit(). Where no new file can be made or take that place (the folder
// cannot be written, the target is a device or a pipe, or somebody has it open and its system
// minds) the target is written in place. Symbolic links are followed where the standard library
// knows them.
//
// When something cannot be written, the old file stays as it was, as far as it was not written in
// place; what was written is removed, and one line on the error log says so.
class SavedFile {
  public:
    // Opens `path` for saving; an existing file that may not be written is refused.
    explicit SavedFile(const std::string& path);
    // Without a commit() before, nothing was saved.
    ~SavedFile();
    SavedFile(const SavedFile&) = delete;
    SavedFile& operator=(const SavedFile&) = delete;

    // Where to write, in binary mode; null when the file could not be opened. Errors stay in the
    // stream, for commit() to find.
    [[nodiscard]] std::FILE* stream() const { return stream_; }

    // Completes the file. False when something could not be written; the stream is closed either
    // way.
    [[nodiscard]] bool commit();

  private:
    void open_over(std::filesystem::file_status old); // an existing file
    bool open_beside();
    void remove_temporary();
    void log_failure(int error) const;

    std::filesystem::path target_;    // links resolved
    std::filesystem::path temporary_; // empty: written in place
    std::FILE* stream_ = nullptr;
};

} // namespace pelmora
