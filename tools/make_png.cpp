// Draws a turtle program as an icon of one size, with a transparent background.
#include "tools/icon_files.h"
#include "tools/icon_main.h"

#include <charconv>
#include <cstdio>
#include <cstring>

int main(int argc, char* argv[]) {
    constexpr int kLargest = 1024;
    int size = 0;
    if (argc == 4) {
        std::from_chars(argv[3], argv[3] + std::strlen(argv[3]), size);
    }
    if (size < 1 || size > kLargest) {
        std::fprintf(stderr, "usage: make_png PROGRAM.txt ICON.png SIZE\n");
        return 2;
    }
    return icon::write_icon(argv[1], argv[2], [size](const pelmora::ExprNode* program) {
        return icon::png_file(program, size);
    });
}
