#include "resources/resource_reader.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

constexpr std::uint16_t kNumberFollows = 0xFFFF;

// Deeper menus are damaged data; the limit bounds the recursion.
constexpr int kDeepestMenu = 16;

// Reads little-endian values sequentially. Reading past the end returns zeros and sets failed(), so
// that callers check once after a whole record.
class ByteReader {
  public:
    explicit ByteReader(Bytes bytes) : bytes_(bytes) {}

    bool failed() const { return failed_; }
    bool at_end() const { return position_ >= bytes_.size(); }

    std::uint8_t u8() { return static_cast<std::uint8_t>(number(1)); }
    std::uint16_t u16() { return static_cast<std::uint16_t>(number(2)); }
    std::int16_t i16() { return static_cast<std::int16_t>(number(2)); }
    std::uint32_t u32() { return number(4); }
    std::int32_t i32() { return static_cast<std::int32_t>(number(4)); }

    Bytes bytes(std::size_t size) {
        if (size > bytes_.size() - position_) {
            fail();
            return {};
        }
        const Bytes part = bytes_.subspan(position_, size);
        position_ += size;
        return part;
    }

    // A zero-terminated text.
    std::u16string text() {
        std::u16string result;
        for (std::uint16_t unit = u16(); unit != 0; unit = u16()) {
            result.push_back(static_cast<char16_t>(unit));
        }
        return result;
    }

    // Either FFFF and a number, or a text.
    NumberOrText number_or_text() {
        const std::size_t start = position_;
        if (u16() == kNumberFollows) {
            return {u16(), {}};
        }
        position_ = failed_ ? bytes_.size() : start;
        return {0, text()};
    }

    void align4() { position_ = std::min((position_ + 3) & ~std::size_t{3}, bytes_.size()); }
    void skip(std::size_t size) { bytes(size); }

  private:
    std::uint32_t number(std::size_t size) {
        std::uint32_t value = 0;
        const Bytes part = bytes(size);
        for (std::size_t i = 0; i < part.size(); ++i) {
            value |= static_cast<std::uint32_t>(part[i]) << (8 * i);
        }
        return value;
    }
    void fail() {
        failed_ = true;
        position_ = bytes_.size();
    }

    Bytes bytes_;
    std::size_t position_ = 0;
    bool failed_ = false;
};

// Reads menu items up to the end mark of their level.
bool read_menu_items(ByteReader& reader, std::vector<MenuItem>& items, int depth) {
    constexpr std::uint16_t kGrayed = 0x01;
    constexpr std::uint16_t kPopup = 0x10;
    constexpr std::uint16_t kEnd = 0x80;
    if (depth > kDeepestMenu) {
        return false;
    }
    for (;;) {
        const std::uint16_t flags = reader.u16();
        MenuItem item;
        item.popup = (flags & kPopup) != 0;
        item.grayed = (flags & kGrayed) != 0;
        item.id = item.popup ? std::uint16_t{0} : reader.u16();
        item.text = reader.text();
        item.separator = !item.popup && item.id == 0 && item.text.empty();
        if (reader.failed() || (item.popup && !read_menu_items(reader, item.items, depth + 1))) {
            return false;
        }
        items.push_back(std::move(item));
        if ((flags & kEnd) != 0) {
            return true;
        }
    }
}

struct DialogHeader {
    bool extended;
    std::uint16_t items;
};

DialogHeader read_dialog_header(ByteReader& reader, DialogTemplate& dialog) {
    constexpr std::uint32_t kSetFont = 0x40;
    constexpr std::uint32_t kExtendedSignature = 0xFFFF0001;
    DialogHeader header{};
    const std::uint32_t first = reader.u32();
    header.extended = first == kExtendedSignature;
    if (header.extended) {
        reader.skip(8); // help id, extended style
        dialog.style = reader.u32();
    } else {
        dialog.style = first;
        reader.skip(4); // extended style
    }
    header.items = reader.u16();
    dialog.x = reader.i16();
    dialog.y = reader.i16();
    dialog.width = reader.i16();
    dialog.height = reader.i16();
    reader.number_or_text(); // menu
    reader.number_or_text(); // class
    dialog.title = reader.text();
    if ((dialog.style & kSetFont) != 0) {
        reader.skip(header.extended ? 6 : 2); // size, and weight, italic, charset
        reader.text();
    }
    return header;
}

DialogItem read_dialog_item(ByteReader& reader, bool extended) {
    DialogItem item;
    reader.align4();
    if (extended) {
        reader.skip(8); // help id, extended style
        item.style = reader.u32();
    } else {
        item.style = reader.u32();
        reader.skip(4);
    }
    item.x = reader.i16();
    item.y = reader.i16();
    item.width = reader.i16();
    item.height = reader.i16();
    item.id = extended ? reader.i32() : reader.i16();
    item.window_class = reader.number_or_text();
    item.text = reader.number_or_text();
    reader.skip(reader.u16()); // creation data
    return item;
}

} // namespace

ResourceFile::ResourceFile(Bytes file) {
    constexpr std::uint32_t kNullHeader = 32;
    ByteReader reader(file);
    if (reader.u32() != 0 || reader.u32() != kNullHeader) {
        return;
    }
    reader.skip(kNullHeader - 8);
    while (!reader.failed() && !reader.at_end()) {
        const std::uint32_t data_size = reader.u32();
        reader.skip(4); // header size
        const NumberOrText type = reader.number_or_text();
        const NumberOrText id = reader.number_or_text();
        reader.align4();
        reader.skip(16); // versions, flags, language, characteristics
        const Bytes data = reader.bytes(data_size);
        reader.align4();
        if (!reader.failed() && type.text.empty() && id.text.empty()) {
            entries_.push_back({type.number, id.number, data});
        }
    }
    intact_ = !reader.failed();
}

Bytes ResourceFile::find(ResourceType type, std::uint16_t id) const {
    for (const Entry& entry : entries_) {
        if (entry.type == static_cast<std::uint16_t>(type) && entry.id == id) {
            return entry.data;
        }
    }
    return {};
}

std::optional<std::vector<MenuItem>> read_menu(Bytes data) {
    ByteReader reader(data);
    reader.skip(4); // version, header size
    std::vector<MenuItem> items;
    if (!read_menu_items(reader, items, 0)) {
        return std::nullopt;
    }
    return items;
}

std::optional<std::vector<Accelerator>> read_accelerators(Bytes data) {
    ByteReader reader(data);
    std::vector<Accelerator> table;
    for (;;) {
        const std::uint16_t flags = reader.u16();
        Accelerator entry{};
        entry.virtual_key = (flags & 0x01) != 0;
        entry.shift = (flags & 0x04) != 0;
        entry.control = (flags & 0x08) != 0;
        entry.alt = (flags & 0x10) != 0;
        entry.key = reader.u16();
        entry.id = reader.u16();
        reader.skip(2);
        if (reader.failed()) {
            return std::nullopt;
        }
        table.push_back(entry);
        if ((flags & 0x80) != 0) {
            return table;
        }
    }
}

std::optional<DialogTemplate> read_dialog(Bytes data) {
    ByteReader reader(data);
    DialogTemplate dialog;
    const DialogHeader header = read_dialog_header(reader, dialog);
    for (int i = 0; i < header.items && !reader.failed(); ++i) {
        dialog.items.push_back(read_dialog_item(reader, header.extended));
    }
    if (reader.failed()) {
        return std::nullopt;
    }
    return dialog;
}

std::u16string read_string(const ResourceFile& file, std::uint16_t id) {
    // Strings are stored in blocks of sixteen, each with a length prefix.
    const auto block = static_cast<std::uint16_t>(id / 16 + 1);
    ByteReader reader(file.find(ResourceType::string_table, block));
    for (int i = 0; i < id % 16; ++i) {
        reader.skip(std::size_t{2} * reader.u16());
    }
    std::u16string text;
    for (std::uint16_t left = reader.u16(); left > 0 && !reader.failed(); --left) {
        text.push_back(static_cast<char16_t>(reader.u16()));
    }
    return reader.failed() ? std::u16string() : text;
}

std::vector<IconPicture> read_icon(const ResourceFile& file, std::uint16_t id) {
    ByteReader reader(file.find(ResourceType::icon_group, id));
    reader.skip(4); // reserved, type
    std::vector<IconPicture> pictures;
    for (int left = reader.u16(); left > 0 && !reader.failed(); --left) {
        IconPicture picture;
        const int width = reader.u8();
        const int height = reader.u8();
        picture.width = width == 0 ? 256 : width;
        picture.height = height == 0 ? 256 : height;
        reader.skip(10); // colours, reserved, planes, bits, size
        picture.data = file.find(ResourceType::icon, reader.u16());
        if (!reader.failed() && !picture.data.empty()) {
            pictures.push_back(picture);
        }
    }
    return pictures;
}

std::vector<std::uint32_t> read_icon_pixels(const IconPicture& picture) {
    constexpr std::uint32_t kHeaderSize = 40;
    ByteReader reader(picture.data);
    const bool header = reader.u32() == kHeaderSize;
    const std::int32_t width = reader.i32();
    const std::int32_t doubled_height = reader.i32(); // colours and mask
    reader.skip(2);                                   // planes
    const std::uint16_t bits = reader.u16();
    const std::uint32_t compression = reader.u32();
    reader.skip(20);
    if (!header || width != picture.width || doubled_height != 2 * picture.height || bits != 32 ||
        compression != 0) {
        return {};
    }
    const auto row = static_cast<std::size_t>(picture.width);
    std::vector<std::uint32_t> pixels(row * static_cast<std::size_t>(picture.height));
    for (std::size_t start = pixels.size(); start > 0; start -= row) { // bottom row first
        for (std::size_t x = 0; x < row; ++x) {
            pixels[start - row + x] = reader.u32();
        }
    }
    return reader.failed() ? std::vector<std::uint32_t>() : pixels;
}

} // namespace platform
