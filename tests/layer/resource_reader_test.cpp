// The reader of compiled resources, on the program's own, whole and damaged. What they say is
// looked at where the program shows it.
#include "platform/qt/resource_reader.h"

#include "resources/resource.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

extern "C" const std::uint8_t pelmora_resources_begin[];
extern "C" const std::uint8_t pelmora_resources_end[];

namespace {

using namespace platform;
using Copy = std::vector<std::uint8_t>;

Copy program_file() {
    return {&pelmora_resources_begin[0], &pelmora_resources_end[0]};
}

// Whatever the bytes, reading ends with a result or none; the sanitizers watch over it.
void read_everything(const Copy& bytes) {
    const ResourceFile file(bytes);
    for (std::uint16_t id = IDR_MAIN_MENU; id <= IDR_ENGINE_MENU; ++id) {
        static_cast<void>(read_menu(file.find(ResourceType::menu, id)));
        static_cast<void>(read_accelerators(file.find(ResourceType::accelerators, id)));
    }
    for (std::uint16_t id = IDD_ABOUT; id <= IDD_POPULATION; ++id) {
        static_cast<void>(read_dialog(file.find(ResourceType::dialog, id)));
        static_cast<void>(read_string(file, id));
        for (const IconPicture& picture : read_icon(file, id)) {
            static_cast<void>(read_icon_pixels(picture));
        }
    }
}

TEST(ResourceReader, DamagedFilesGiveNothingAndDoNoHarm) {
    const Copy whole = program_file();
    EXPECT_TRUE(ResourceFile(whole).intact());
    EXPECT_FALSE(ResourceFile(Bytes(whole).first(whole.size() - 4)).intact());
    std::mt19937 random(1); // the same every time
    for (int i = 0; i < 500; ++i) {
        Copy damaged = whole;
        for (int hits = 0; hits < 40; ++hits) {
            damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random());
        }
        read_everything(damaged);
        damaged.resize(random() % damaged.size());
        read_everything(damaged);
    }
}

TEST(ResourceReader, EntriesThatEndEarlyGiveNothing) {
    const Copy whole = program_file();
    const ResourceFile file(whole);
    const Bytes menu = file.find(ResourceType::menu, IDR_LOGO_MENU);
    ASSERT_TRUE(read_menu(menu).has_value());
    const Bytes dialog = file.find(ResourceType::dialog, IDD_POPULATION);
    ASSERT_TRUE(read_dialog(dialog).has_value());
    for (std::size_t part = 0; part + 4 < menu.size(); ++part) {
        EXPECT_FALSE(read_menu(menu.first(part)).has_value()) << part;
    }
    for (std::size_t part = 0; part + 8 < dialog.size(); ++part) {
        EXPECT_FALSE(read_dialog(dialog.first(part)).has_value()) << part;
    }
    EXPECT_EQ(read_string(file, IDS_MAIN_TITLE), u"Pelmora Main Window");
    EXPECT_EQ(read_string(file, 5), u"");
    EXPECT_TRUE(read_icon(file, 5).empty());
    EXPECT_FALSE(read_menu(Copy(1'000'000, 0x10)).has_value()); // popups without an end
}

} // namespace
