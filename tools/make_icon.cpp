// Draws a turtle program as an icon file with a transparent background: .ico for Windows, with all
// the sizes that it uses, or .svg.
#include "tools/icon_files.h"
#include "tools/icon_main.h"

#include <cstdio>
#include <string_view>

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_icon PROGRAM.txt ICON.ico|ICON.svg\n");
        return 2;
    }
    const bool vectors = std::string_view(argv[2]).ends_with(".svg");
    return icon::write_icon(argv[1], argv[2], vectors ? icon::svg_file : icon::ico_file);
}
