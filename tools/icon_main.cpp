#include "tools/icon_main.h"

#include "model/parse.h"

#include <cstdio>
#include <fstream>
#include <iterator>

namespace icon {

int write_icon(const char* program_path, const char* icon_path,
               const std::function<std::string(const pelmora::ExprNode*)>& content) {
    std::ifstream in(program_path);
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    const pelmora::ExprTree program(pelmora::parse_expr(text.c_str()));
    if (!in || program == nullptr) {
        std::fprintf(stderr, "%s cannot be read as a turtle program\n", program_path);
        return 1;
    }
    std::ofstream out(icon_path, std::ios::binary);
    out << content(program.get()) << std::flush;
    if (!out) {
        std::fprintf(stderr, "%s cannot be written\n", icon_path);
        return 1;
    }
    return 0;
}

} // namespace icon
