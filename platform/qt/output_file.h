// The files that the layer itself makes: metafiles and printed pages.
#pragma once

#include <cstddef>
#include <filesystem>

namespace platform {

// A file that is to be written as a whole. It is made beside the old one and takes its place and
// its permissions; where nothing can be made beside it (the folder cannot be written, or the target
// is a device or a pipe) the target is written in place. Links are followed. The program saves its
// texts by the same rules, in plain C++, as on Windows it has no layer.
class OutputFile {
  public:
    // Opens `path` (UTF-8) and changes nothing that is there. A pipe that nobody reads is refused
    // instead of waited for.
    explicit OutputFile(const char* path);
    // Unless write() succeeded, the old file stands as it was.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // False when `path` cannot be written.
    [[nodiscard]] bool is_open() const { return target_ != -1 || temporary_ != -1; }

    // Writes the content, once. False when not all of it could be written; the old file is then
    // lost only if it had to be written in place.
    [[nodiscard]] bool write(const char* bytes, std::size_t count);

  private:
    void open_beside();
    bool write_in_place(const char* bytes, std::size_t count);
    bool replace(const char* bytes, std::size_t count);

    std::filesystem::path path_; // links resolved
    std::filesystem::path temporary_path_;
    int target_ = -1;    // a descriptor: what is there already
    int temporary_ = -1; // a descriptor: what will take its place
};

} // namespace platform
