// Draws a turtle program as an icon of one size, with a transparent background.
#include "tools/icon_files.h"
#include "tools/icon_main.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char* argv[]) {
    constexpr int kLargest = 1024;
    const int size = argc == 4 ? std::atoi(argv[3]) : 0;
    if (size < 1 || size > kLargest) {
        std::fprintf(stderr, "usage: make_png PROGRAM.txt ICON.png SIZE\n");
        return 2;
    }
    return icon::write_icon(argv[1], argv[2], [size](const pelmora::ExprNode* program) {
        return icon::png_file(program, size);
    });
}
