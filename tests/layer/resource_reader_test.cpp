// The resource reader on truncated copies of the program's resources. Their content is checked
// where the program shows it; other damage is left to the fuzzer.
#include "resources/resource_reader.h"

#include "resources/resource.h"

#include <gtest/gtest.h>

#include <vector>

extern "C" const std::uint8_t pelmora_resources_begin[];
extern "C" const std::uint8_t pelmora_resources_end[];

namespace {

using namespace platform;
using Copy = std::vector<std::uint8_t>;

// A copy in its own allocation, so that the sanitizers detect reads past its end.
Copy copy_of(Bytes bytes) {
    return {bytes.begin(), bytes.end()};
}

TEST(ResourceReader, TruncatedEntriesGiveNothing) {
    const Copy whole{&pelmora_resources_begin[0], &pelmora_resources_end[0]};
    EXPECT_FALSE(ResourceFile(Bytes(whole).first(whole.size() - 4)).intact());
    const ResourceFile file(whole);
    ASSERT_TRUE(file.intact());
    const Bytes menu = file.find(ResourceType::menu, IDR_LOGO_MENU);
    ASSERT_TRUE(read_menu(menu).has_value());
    const Bytes dialog = file.find(ResourceType::dialog, IDD_POPULATION);
    ASSERT_TRUE(read_dialog(dialog).has_value());
    for (std::size_t part = 0; part + 4 < menu.size(); ++part) {
        EXPECT_FALSE(read_menu(copy_of(menu.first(part))).has_value()) << part;
    }
    for (std::size_t part = 0; part + 8 < dialog.size(); ++part) {
        EXPECT_FALSE(read_dialog(copy_of(dialog.first(part))).has_value()) << part;
    }
    EXPECT_EQ(read_string(file, IDS_MAIN_TITLE), u"Pelmora Main Window");
    EXPECT_EQ(read_string(file, 5), u"");
    EXPECT_TRUE(read_icon(file, 5).empty());
    EXPECT_FALSE(read_menu(Copy(1'000'000, 0x10)).has_value()); // endlessly nested popups
}

} // namespace
