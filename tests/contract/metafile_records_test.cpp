// Metafiles: their records, their header and their files.
#include "tests/support/metafile_text.h"

#include "platform/win32.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace pelmora_test;
namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

constexpr char kName[] = "drawn.emf"; // in the current folder
constexpr char kDescription[] = "A\0B\0";
constexpr RECT kFrame{0, 0, 5000, 3000};

std::string content_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void line(HDC device, int x0, int y0, int x1, int y1) {
    EXPECT_EQ(MoveToEx(device, x0, y0, nullptr), 1);
    EXPECT_EQ(LineTo(device, x1, y1), 1);
}

// The bytes of a metafile file that `draw` draws.
template <typename Draw>
std::string recorded(const RECT* frame, const char* description, Draw draw) {
    HDC device = CreateEnhMetaFileA(nullptr, kName, frame, description);
    EXPECT_NE(device, nullptr);
    draw(device);
    HENHMETAFILE metafile = CloseEnhMetaFile(device);
    EXPECT_NE(metafile, nullptr);
    std::string bytes = content_of(kName);
    EXPECT_EQ(DeleteEnhMetaFile(metafile), 1);
    EXPECT_TRUE(fs::remove(kName)); // deleting the handle keeps the file
    return bytes;
}

TEST(Metafile, RecordsEveryCallOnce) {
    std::ofstream(kName) << std::string(100'000, 'x'); // to be replaced
    HPEN blue = CreatePen(PS_SOLID, 0, RGB(1, 2, 255));
    const std::string bytes = recorded(&kFrame, kDescription, [blue](HDC device) {
        EXPECT_EQ(GetCurrentObject(device, OBJ_PEN), GetStockObject(BLACK_PEN));
        EXPECT_EQ(SetMapMode(device, MM_LOMETRIC), MM_TEXT);
        EXPECT_EQ(SetMapMode(device, MM_LOMETRIC), MM_LOMETRIC);
        HPEN unused = CreatePen(PS_SOLID, 9, RGB(9, 9, 9));
        HPEN red = CreatePen(PS_SOLID, -3, RGB(255, 0, 0));
        EXPECT_EQ(SelectObject(device, red), GetStockObject(BLACK_PEN));
        line(device, 1, -2, 3, 4);
        EXPECT_EQ(SelectObject(device, blue), red);
        EXPECT_EQ(SelectObject(device, red), blue);
        EXPECT_EQ(GetCurrentObject(device, OBJ_PEN), red);
        EXPECT_EQ(DeleteObject(red), 1); // frees its number; it stays selected
        EXPECT_EQ(LineTo(device, -2'000'000'000, 2'000'000'000), 1);
        HPEN green = CreatePen(PS_SOLID, 1, RGB(0, 255, 0));
        SelectObject(device, green);
        EXPECT_EQ(DeleteObject(unused), 1);
        SelectObject(device, GetStockObject(BLACK_PEN));
        EXPECT_EQ(DeleteObject(green), 1);
        SelectObject(device, blue);
        EXPECT_EQ(SetMapMode(device, MM_TEXT), MM_LOMETRIC);
    });
    EXPECT_EQ(DeleteObject(blue), 1); // after closing: not recorded

    Lines lines = metafile_lines(bytes);
    lines.front().erase(7, lines.front().find("frame") - 7);
    EXPECT_EQ(lines, (Lines{"HEADER frame 0 0 5000 3000 handles 3 description A/B", "SETMAPMODE 2",
                            "SETMAPMODE 2", "CREATEPEN 1 width 3 color 0x0000FF", "SELECTOBJECT 1",
                            "MOVETOEX 1 -2", "LINETO 3 4", "CREATEPEN 2 width 0 color 0xFF0201",
                            "SELECTOBJECT 2", "SELECTOBJECT 1", "DELETEOBJECT 1",
                            "LINETO -2000000000 2000000000", "CREATEPEN 1 width 1 color 0x00FF00",
                            "SELECTOBJECT 1", "SELECTOBJECT stock 7", "DELETEOBJECT 1",
                            "SELECTOBJECT 2", "SETMAPMODE 1", "EOF"}));
    EXPECT_EQ(bytes.substr(bytes.size() - 12), std::string("\0\0\0\0\x10\0\0\0\x14\0\0\0", 12));
}

TEST(Metafile, HasAHeaderThatFitsTheScreen) {
    HDC screen = GetDC(nullptr);
    const int pixels_x = GetDeviceCaps(screen, HORZRES);
    const int pixels_y = GetDeviceCaps(screen, VERTRES);
    ReleaseDC(nullptr, screen);
    const std::string bytes = recorded(nullptr, kDescription, [](HDC device) {
        line(device, 300, 500, 100, 400);
        line(device, 200, 450, 1000, 450);
        MoveToEx(device, 9999, 9999, nullptr); // draws nothing
    });
    const int wide = metafile_number(bytes, 80); // millimetres
    const int high = metafile_number(bytes, 84);
    EXPECT_TRUE(wide > 0 && high > 0);
    const auto text = [](std::initializer_list<int> numbers) {
        std::string all;
        for (const int number : numbers) {
            all.append(" ").append(std::to_string(number));
        }
        return all;
    };
    // Bounds, frame and device; tests/agreement checks what does not depend on the screen.
    EXPECT_EQ(metafile_numbers(bytes, 8, 4), " 100 400 1000 500");
    EXPECT_EQ(metafile_numbers(bytes, 24, 4),
              text({100 * wide * 100 / pixels_x, 400 * high * 100 / pixels_y,
                    1000 * wide * 100 / pixels_x, 500 * high * 100 / pixels_y}));
    EXPECT_EQ(metafile_numbers(bytes, 72, 2), text({pixels_x, pixels_y}));
    EXPECT_EQ(metafile_numbers(bytes, 100, 2), text({wide * 1000, high * 1000}));
}

// In every map mode the width and the height of the screen are whole numbers of units.
TEST(Metafile, BoundsFollowTheMapMode) {
    // Each with its units per millimetre.
    const std::pair<int, double> modes[] = {{MM_LOMETRIC, 10},
                                            {MM_HIMETRIC, 100},
                                            {MM_LOENGLISH, 100 / 25.4},
                                            {MM_HIENGLISH, 1000 / 25.4}};
    std::mt19937 random(1); // a fixed seed
    for (const auto& [mode, units] : modes) {
        for (int i = 0; i < 25; ++i) {
            std::array<int, 4> ends;
            std::generate(ends.begin(), ends.end(),
                          [&] { return static_cast<int>(random() % 60'001) - 30'000; });
            const auto [x0, y0, x1, y1] = ends;
            const std::string bytes = recorded(&kFrame, nullptr, [&, mode = mode](HDC device) {
                EXPECT_EQ(SetMapMode(device, mode), MM_TEXT);
                line(device, ends[0], ends[1], ends[2], ends[3]);
            });
            // The nearest pixel; halves may be rounded either way.
            const int bounds[] = {std::min(x0, x1), -std::max(y0, y1), std::max(x0, x1),
                                  -std::min(y0, y1)};
            for (std::size_t side = 0; side < 4; ++side) {
                const std::size_t axis = side % 2 * 4;
                const double extent = std::round(metafile_number(bytes, 80 + axis) * units);
                EXPECT_NEAR(metafile_number(bytes, 8 + 4 * side),
                            bounds[side] * metafile_number(bytes, 72 + axis) / extent, 0.500001)
                    << mode;
            }
        }
    }
}

TEST(Metafile, IsKeptInMemoryWithoutAFileName) {
    HDC device = CreateEnhMetaFileA(nullptr, nullptr, nullptr, kDescription);
    ASSERT_NE(device, nullptr);
    line(device, 1, 2, 3, 4);
    HENHMETAFILE metafile = CloseEnhMetaFile(device);
    EXPECT_NE(metafile, nullptr);
    EXPECT_EQ(DeleteEnhMetaFile(metafile), 1);
    EXPECT_EQ(DeleteEnhMetaFile(metafile), 0); // released handles are recognised
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(CloseEnhMetaFile(nullptr), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST(Metafile, IsRefusedWhereItCannotBeWritten) {
    const auto refused = [](const char* path) {
        SetLastError(ERROR_SUCCESS);
        return CreateEnhMetaFileA(nullptr, path, &kFrame, nullptr) == nullptr;
    };
    EXPECT_TRUE(refused("no/such/folder.emf"));
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
    EXPECT_TRUE(refused("."));
    EXPECT_TRUE(refused(""));
}

} // namespace
