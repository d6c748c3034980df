// Parses compiled resources (.res files): menus, accelerators, dialogs, strings and icons. Input is
// validated: a damaged file gives empty results, never a crash. Does not use the toolkit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform {

using Bytes = std::span<const std::uint8_t>;

enum class ResourceType : std::uint16_t {
    icon = 3,
    menu = 4,
    dialog = 5,
    string_table = 6,
    accelerators = 9,
    icon_group = 14,
};

// An index of the entries of a .res file. Borrows the bytes. Skips entries named by text instead of
// a number; stops at the first damaged entry.
class ResourceFile {
  public:
    explicit ResourceFile(Bytes file);

    // False when the file is not a .res file or has a damaged entry.
    bool intact() const { return intact_; }

    // The data of an entry; empty for none.
    Bytes find(ResourceType type, std::uint16_t id) const;

  private:
    struct Entry {
        std::uint16_t type;
        std::uint16_t id;
        Bytes data;
    };
    std::vector<Entry> entries_;
    bool intact_ = false;
};

struct MenuItem {
    std::u16string text; // empty for a separator; a tab separates label and shortcut
    std::uint16_t id = 0;
    bool separator = false;
    bool grayed = false;
    bool popup = false;
    std::vector<MenuItem> items; // of a popup
};
std::optional<std::vector<MenuItem>> read_menu(Bytes data);

struct Accelerator {
    bool virtual_key; // false: `key` is a character
    bool shift, control, alt;
    std::uint16_t key;
    std::uint16_t id;
};
std::optional<std::vector<Accelerator>> read_accelerators(Bytes data);

// A class or a text in a dialog, given by a number or by a text.
struct NumberOrText {
    std::uint16_t number = 0; // 0: use the text
    std::u16string text;
};

struct DialogItem {
    std::uint32_t style = 0;
    int x = 0, y = 0, width = 0, height = 0; // dialog units
    std::int32_t id = -1;
    NumberOrText window_class;
    NumberOrText text;
};

struct DialogTemplate {
    std::uint32_t style = 0;
    int x = 0, y = 0, width = 0, height = 0; // dialog units
    std::u16string title;
    std::vector<DialogItem> items;
};
std::optional<DialogTemplate> read_dialog(Bytes data);

// The string with this id; empty for none.
std::u16string read_string(const ResourceFile& file, std::uint16_t id);

// One image of an icon as stored: a 32-bit bitmap with its header, or a PNG.
struct IconPicture {
    int width = 0, height = 0;
    Bytes data;
};
std::vector<IconPicture> read_icon(const ResourceFile& file, std::uint16_t id);

// The pixels of a 32-bit icon bitmap, 0xAARRGGBB, top row first; empty for other formats.
std::vector<std::uint32_t> read_icon_pixels(const IconPicture& picture);

} // namespace platform
