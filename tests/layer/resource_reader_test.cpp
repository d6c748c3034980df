// The reader of compiled resources, on entries made by hand and on damaged ones.
#include "platform/qt/resource_reader.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using namespace platform;

class Writer {
  public:
    Writer& u8(unsigned v) { return number(v, 1); }
    Writer& u16(unsigned v) { return number(v, 2); }
    Writer& u32(unsigned v) { return number(v, 4); }
    Writer& text(const std::u16string& s) {
        for (const char16_t c : s) {
            u16(c);
        }
        return u16(0);
    }
    Writer& align() {
        bytes.resize((bytes.size() + 3) & ~std::size_t{3});
        return *this;
    }
    Writer& entry(unsigned type, unsigned id, const std::vector<std::uint8_t>& data) {
        u32(static_cast<unsigned>(data.size())).u32(32).u16(0xFFFF).u16(type).u16(0xFFFF).u16(id);
        for (int i = 0; i < 4; ++i) {
            u32(0);
        }
        bytes.insert(bytes.end(), data.begin(), data.end());
        return align();
    }
    std::vector<std::uint8_t> bytes;

  private:
    Writer& number(unsigned v, int size) {
        for (int i = 0; i < size; ++i) {
            bytes.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
        }
        return *this;
    }
};

std::vector<std::uint8_t> sample_menu() {
    Writer w;
    w.u16(0).u16(0);
    w.u16(0x10).text(u"&File");
    w.u16(0).u16(7).text(u"&New\tCtl+N");
    w.u16(0).u16(0).text(u"");
    w.u16(0x81).u16(8).text(u"Cut");
    w.u16(0x90).text(u"&Help");
    w.u16(0x80).u16(9).text(u"About");
    return w.bytes;
}

std::vector<std::uint8_t> sample_dialog(bool extended) {
    Writer w;
    if (extended) {
        w.u16(1).u16(0xFFFF).u32(0).u32(0).u32(0x40);
    } else {
        w.u32(0x40).u32(0);
    }
    w.u16(2).u16(22).u16(17).u16(230).u16(71).u16(0).u16(0).text(u"Title").u16(9);
    if (extended) {
        w.u16(400).u16(0x0100);
    }
    w.text(u"A face");
    const auto item = [&](unsigned style, unsigned id) -> Writer& {
        w.align();
        if (extended) {
            w.u32(0).u32(0).u32(style);
        } else {
            w.u32(style).u32(0);
        }
        w.u16(1).u16(0xFFFE).u16(3).u16(4);
        return extended ? w.u32(id) : w.u16(id);
    };
    item(0x50010000, 1009).u16(0xFFFF).u16(0x81).text(u"text").u16(0);
    item(0x50000003, 0xFFFF).text(u"msctls_trackbar32").u16(0xFFFF).u16(107).u16(2).u16(5);
    return w.bytes;
}

std::vector<std::uint8_t> sample_file() {
    Writer strings;
    for (int i = 0; i < 16; ++i) {
        strings.u16(i == 14 ? 2 : 0);
        if (i == 14) {
            strings.u16('H').u16('i');
        }
    }
    Writer group;
    group.u16(0).u16(1).u16(1).u8(2).u8(1).u8(0).u8(0).u16(1).u16(32).u32(52).u16(1);
    Writer icon;
    icon.u32(40).u32(2).u32(2).u16(1).u16(32).u32(0);
    for (int i = 0; i < 5; ++i) {
        icon.u32(0);
    }
    icon.u32(0xFF112233).u32(0x80445566).u32(0);
    Writer file;
    file.u32(0).u32(32).u16(0xFFFF).u16(0).u16(0xFFFF).u16(0).u32(0).u32(0).u32(0).u32(0);
    file.entry(4, 110, sample_menu()).entry(6, 7, strings.bytes);
    file.entry(3, 1, icon.bytes).entry(14, 107, group.bytes).entry(5, 103, sample_dialog(true));
    return file.bytes;
}

TEST(ResourceReader, ReadsMenus) {
    const auto menu = read_menu(sample_menu());
    ASSERT_TRUE(menu.has_value());
    ASSERT_EQ(menu->size(), 2U);
    const std::vector<MenuItem>& file = (*menu)[0].items;
    ASSERT_EQ(file.size(), 3U);
    EXPECT_EQ(file[0].text, u"&New\tCtl+N");
    EXPECT_EQ(file[0].id, 7);
    EXPECT_TRUE(file[1].separator);
    EXPECT_TRUE(file[2].grayed && !file[0].grayed);
    EXPECT_EQ((*menu)[1].items.at(0).id, 9);
}

TEST(ResourceReader, ReadsBothKindsOfDialog) {
    for (const bool extended : {false, true}) {
        const auto dialog = read_dialog(sample_dialog(extended));
        ASSERT_TRUE(dialog.has_value());
        EXPECT_EQ(dialog->title, u"Title");
        EXPECT_EQ(dialog->width, 230);
        ASSERT_EQ(dialog->items.size(), 2U);
        const DialogItem& edit = dialog->items[0];
        EXPECT_EQ(edit.id, 1009);
        EXPECT_EQ(edit.y, -2);
        EXPECT_EQ(edit.window_class.number, 0x81);
        EXPECT_EQ(edit.text.text, u"text");
        const DialogItem& bar = dialog->items[1];
        EXPECT_EQ(bar.style, 0x50000003U);
        EXPECT_EQ(bar.window_class.text, u"msctls_trackbar32");
        EXPECT_EQ(bar.text.number, 107);
    }
}

TEST(ResourceReader, ReadsAcceleratorsStringsAndIcons) {
    Writer w;
    w.u16(0x12).u16('/').u16(104).u16(0).u16(0x8D).u16('E').u16(32771).u16(0);
    const auto table = read_accelerators(w.bytes);
    ASSERT_TRUE(table.has_value());
    ASSERT_EQ(table->size(), 2U);
    EXPECT_TRUE(!(*table)[0].virtual_key && (*table)[0].alt && (*table)[0].key == '/');
    EXPECT_TRUE((*table)[1].virtual_key && (*table)[1].control && (*table)[1].shift);
    EXPECT_EQ((*table)[1].id, 32771);

    const std::vector<std::uint8_t> bytes = sample_file();
    const ResourceFile file(bytes);
    ASSERT_TRUE(file.intact());
    EXPECT_EQ(read_string(file, 110), u"Hi");
    EXPECT_EQ(read_string(file, 111), u"");
    EXPECT_EQ(read_string(file, 5), u"");
    const auto icon = read_icon(file, 107);
    ASSERT_EQ(icon.size(), 1U);
    EXPECT_EQ(read_icon_pixels(icon[0]), (std::vector<std::uint32_t>{0xFF112233, 0x80445566}));
    EXPECT_TRUE(read_icon(file, 108).empty());
}

// Whatever the bytes, reading ends with a result or none; the sanitizers watch over it.
void read_everything(const std::vector<std::uint8_t>& bytes) {
    const ResourceFile file(bytes);
    read_menu(file.find(ResourceType::menu, 110));
    read_dialog(file.find(ResourceType::dialog, 103));
    read_string(file, 110);
    for (const IconPicture& picture : read_icon(file, 107)) {
        read_icon_pixels(picture);
    }
    read_menu(bytes);
    read_dialog(bytes);
    read_accelerators(bytes);
}

TEST(ResourceReader, DamagedFilesGiveNothingAndDoNoHarm) {
    const std::vector<std::uint8_t> whole = sample_file();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const std::vector<std::uint8_t> cut(whole.begin(),
                                            whole.begin() + static_cast<std::ptrdiff_t>(size));
        read_everything(cut);
    }
    std::mt19937 random(1);
    for (int i = 0; i < 5'000; ++i) {
        std::vector<std::uint8_t> damaged = whole;
        for (int hits = 0; hits < 4; ++hits) {
            damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random());
        }
        read_everything(damaged);
    }
    const std::vector<std::uint8_t> menu = sample_menu();
    EXPECT_FALSE(read_menu(Bytes(menu).first(menu.size() - 1)).has_value());
    EXPECT_FALSE(read_dialog(Bytes(sample_dialog(true)).first(60)).has_value());
    EXPECT_FALSE(ResourceFile(Bytes(whole).first(40)).intact());
    EXPECT_FALSE(read_menu(std::vector<std::uint8_t>(1'000'000, 0x10)).has_value());
}

} // namespace
