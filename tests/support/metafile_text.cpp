#include "tests/support/metafile_text.h"

#include <cstdio>

namespace pelmora_test {
namespace {

// Reads little-endian numbers of one record or of the whole file.
class Reader {
  public:
    explicit Reader(const std::string& bytes, std::size_t at = 0) : bytes_(bytes), at_(at) {}

    std::uint32_t u16(std::size_t offset) const { return byte(offset) | byte(offset + 1) << 8U; }
    std::uint32_t u32(std::size_t offset) const { return u16(offset) | u16(offset + 2) << 16U; }
    std::string numbers(std::size_t offset, int count) const {
        return metafile_numbers(bytes_, at_ + offset, count);
    }

  private:
    std::uint32_t byte(std::size_t offset) const {
        return static_cast<unsigned char>(bytes_.at(at_ + offset));
    }
    const std::string& bytes_;
    std::size_t at_;
};

std::string description(const Reader& header) {
    const std::uint32_t count = header.u32(60);
    const std::uint32_t offset = header.u32(64);
    std::string text;
    for (std::uint32_t i = 0; i + 2 < count; ++i) {
        const std::uint32_t unit = header.u16(offset + 2 * i);
        text += unit == 0 ? '/' : static_cast<char>(unit);
    }
    return text;
}

std::string object(const Reader& record) {
    const std::uint32_t index = record.u32(8);
    std::string text = (index & 0x80000000U) != 0 ? "stock " : "";
    text += std::to_string(index & 0x7FFFFFFFU);
    return text;
}

std::string line(const Reader& record, std::uint32_t type) {
    switch (type) {
    case 1:
        return "HEADER bounds" + record.numbers(8, 4) + " frame" + record.numbers(24, 4) +
               " handles " + std::to_string(record.u16(56)) + " description " + description(record);
    case 14:
        return "EOF";
    case 17:
        return "SETMAPMODE" + record.numbers(8, 1);
    case 27:
        return "MOVETOEX" + record.numbers(8, 2);
    case 37:
        return "SELECTOBJECT " + object(record);
    case 38: {
        char color[16];
        std::snprintf(color, sizeof color, "0x%06X", record.u32(24));
        return "CREATEPEN " + object(record) + " width" + record.numbers(16, 1) + " color " + color;
    }
    case 40:
        return "DELETEOBJECT " + object(record);
    case 54:
        return "LINETO" + record.numbers(8, 2);
    default:
        return "RECORD " + std::to_string(type);
    }
}

} // namespace

std::vector<std::string> metafile_lines(const std::string& bytes) {
    std::vector<std::string> lines;
    const auto damaged = [&](const char* what) {
        lines.push_back(std::string("DAMAGED ") + what);
        return lines;
    };
    const Reader file(bytes);
    if (bytes.size() < 108 || file.u32(0) != 1 || file.u32(48) != bytes.size()) {
        return damaged("header");
    }
    for (std::size_t at = 0; at < bytes.size();) {
        const Reader record(bytes, at);
        const std::uint32_t type = record.u32(0);
        if (record.u32(4) < 12 || record.u32(4) % 4 != 0) {
            return damaged("record");
        }
        lines.push_back(line(record, type));
        at += record.u32(4);
    }
    if (lines.size() != file.u32(52) || lines.back() != "EOF") {
        return damaged("count of records");
    }
    return lines;
}

std::int32_t metafile_number(const std::string& bytes, std::size_t offset) {
    return static_cast<std::int32_t>(Reader(bytes).u32(offset));
}

std::string metafile_numbers(const std::string& bytes, std::size_t offset, int count) {
    std::string text;
    for (int i = 0; i < count; ++i, offset += 4) {
        text.append(" ").append(std::to_string(metafile_number(bytes, offset)));
    }
    return text;
}

} // namespace pelmora_test
