// Records drawing as an enhanced metafile.
#pragma once

#include "platform/qt/device_context.h"
#include "platform/qt/metafile.h"

#include <QByteArray>
#include <QFileDevice>

#include <initializer_list>
#include <memory>
#include <vector>

namespace platform {

// Records grow at the end of one array of bytes; the header is written when the recording is
// closed.
class MetafileRecorder final : public DeviceOutput {
  public:
    // `frame` may be null; `description` ends with two zeros, or is null. `file` is where the
    // metafile goes when it is closed, null for memory.
    MetafileRecorder(const RECT* frame, LPCSTR description, std::unique_ptr<QFileDevice> file);
    ~MetafileRecorder() override;

    void move_to(int x, int y) override;
    void line_to(int x, int y) override;
    void select_pen(const GdiObject* pen) override;
    int set_map_mode(int mode) override;
    int caps(int index) const override;

    // A pen is being released: its number in the table of objects is free again.
    void forget_pen(const GdiObject* pen);

    // Completes the metafile and its file. Empty when the file could not be written.
    QByteArray close();

  private:
    void put(std::uint32_t value);
    void put_record(MetafileRecord type, std::initializer_list<std::uint32_t> values);
    std::uint32_t pen_number(const Pen* pen);
    void include(int x, int y);
    void write_header();
    bool write_file();

    ReferenceDevice device_;
    QByteArray bytes_;
    QByteArray description_; // as stored: UTF-16
    std::unique_ptr<QFileDevice> file_;
    std::vector<const GdiObject*> objects_; // number 1 is the first; null: free
    std::size_t most_objects_ = 0;
    std::uint32_t records_ = 1; // the header
    int map_mode_ = MM_TEXT;
    int x_ = 0, y_ = 0;
    RECT bounds_{0, 0, -1, -1}; // pixels
    RECT frame_{};
    bool has_frame_;
};

// Tells the metafiles being recorded that a pen goes.
void forget_recorded_pen(const GdiObject* pen);

} // namespace platform
