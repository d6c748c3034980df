// Understands compiled resources (the binary .res form): menus, accelerators, dialogs, strings and
// icons. Every byte is checked: a damaged file gives nothing, never a crash. Knows no toolkit.
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

// An index over the entries of a .res file. Borrows the bytes. Entries that are named by text
// instead of numbers are passed over; reading ends at the first damaged entry.
class ResourceFile {
  public:
    explicit ResourceFile(Bytes file);

    // False when the file does not begin as a .res file or a damaged entry ended the reading.
    bool intact() const { return intact_; }

    // The data of an entry; empty when there is none.
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
    std::u16string text; // empty for a separator; a tab parts the label from the shortcut
    std::uint16_t id = 0;
    bool separator = false;
    bool grayed = false;
    bool popup = false;
    std::vector<MenuItem> items; // of a popup
};
std::optional<std::vector<MenuItem>> read_menu(Bytes data);

struct Accelerator {
    bool virtual_key; // else `key` is a character
    bool shift, control, alt;
    std::uint16_t key;
    std::uint16_t id;
};
std::optional<std::vector<Accelerator>> read_accelerators(Bytes data);

// A class or a text that a dialog names either by a number or by a text.
struct NumberOrText {
    std::uint16_t number = 0; // 0: the text counts
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

// The string with this id; empty when the table has none.
std::u16string read_string(const ResourceFile& file, std::uint16_t id);

// One picture of an icon, as the file stores it: a 32-bit bitmap with its header, or a PNG.
struct IconPicture {
    int width = 0, height = 0;
    Bytes data;
};
std::vector<IconPicture> read_icon(const ResourceFile& file, std::uint16_t id);

// The pixels of a 32-bit icon bitmap, 0xAARRGGBB, top row first; empty when it is anything else.
std::vector<std::uint32_t> read_icon_pixels(const IconPicture& picture);

} // namespace platform
