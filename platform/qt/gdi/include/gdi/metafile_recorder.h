// Records drawing calls as an enhanced metafile.
#pragma once

#include "gdi/device_context.h"
#include "gdi/metafile.h"
#include "platform/whole_file.h"

#include <QByteArray>

#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <vector>

namespace platform {

// A growing buffer of little-endian numbers. When memory runs out it becomes and stays empty.
class RecordBytes {
  public:
    void put(std::uint32_t value);
    void put(const QByteArray& bytes);
    // Overwrites a number at a byte offset.
    void replace(std::size_t offset, std::uint32_t value);

    const char* data() const { return block_.get(); }
    std::size_t size() const { return size_; } // 0 once memory ran out

  private:
    char* room(std::size_t bytes);

    struct Free {
        void operator()(char* block) const { std::free(block); }
    };
    std::unique_ptr<char, Free> block_;
    std::size_t size_ = 0, capacity_ = 0;
    bool failed_ = false;
};

// A header, most of which is known only in close(), followed by records.
class MetafileRecorder final : public DeviceOutput {
  public:
    // `frame` may be null; `description` ends with two zeros, or is null. close() writes the
    // metafile to `file`; null keeps it in memory only.
    MetafileRecorder(const RECT* frame, LPCSTR description, std::unique_ptr<WholeFile> file);

    void move_to(int x, int y) override;
    void line_to(int x, int y) override;
    void select_pen(const GdiObject* pen) override;
    int set_map_mode(int mode) override;
    int caps(int index) const override;
    void forget_pen(const GdiObject* pen) override; // frees its number in the object table

    // Completes the metafile and its file and returns its bytes. Empty, with the last error set,
    // when memory ran out at any time or the file could not be written.
    QByteArray close();

  private:
    void put_record(MetafileRecord type, std::initializer_list<std::uint32_t> values);
    std::uint32_t pen_number(const Pen* pen);
    void include(int x, int y);
    void put_header();
    void complete_header();

    ReferenceDevice device_;
    RecordBytes bytes_;
    QByteArray description_; // as stored: UTF-16
    std::unique_ptr<WholeFile> file_;
    std::vector<const GdiObject*> objects_; // numbered from 1; null: free
    std::size_t most_objects_ = 0;
    std::uint32_t records_ = 1; // the header
    int map_mode_ = MM_TEXT;
    int x_ = 0, y_ = 0;
    RECT bounds_{0, 0, -1, -1}; // pixels
    RECT frame_{};
    bool has_frame_;
};

} // namespace platform
