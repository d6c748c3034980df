#include "model/print.h"

#include "model/walk.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace pelmora {
namespace {

constexpr std::size_t kTextIndent = 3;
constexpr std::size_t kFileIndent = 4;

using ConstCell = const ExprNode* const*;

// A zero-terminated text that grows. It does not free its memory, which the caller gets.
struct TextBuffer {
    char* data = nullptr;
    std::size_t length = 0;
    std::size_t capacity = 0;

    // Reserves `more` characters and the terminating zero. Doubles the capacity, so that the text
    // is not copied for every piece; without memory for that, reserves only what is needed.
    bool reserve(std::size_t more) {
        const std::size_t needed = length + more + 1;
        return needed <= capacity || resize(std::max(needed, capacity * 2)) || resize(needed);
    }

    bool resize(std::size_t bytes) {
        void* memory = std::realloc(data, bytes);
        if (memory == nullptr) {
            return false;
        }
        data = static_cast<char*>(memory);
        capacity = bytes;
        return true;
    }

    // Needs a reserve() before.
    void append(std::size_t indent, const char* text) {
        const std::size_t bytes = std::strlen(text) + 1;
        std::memset(data + length, ' ', indent);
        std::memcpy(data + length + indent, text, bytes);
        length += indent + bytes - 1;
    }
};

} // namespace

// The closing lines of open functions are reserved before their children are written. So the text
// can always be closed and is a whole program even when memory runs out. After that no node is
// added, even if it would fit, so that the text has no gaps.
char* expr_to_text(const ExprNode* root) {
    TextBuffer text;
    std::size_t owed = 0; // the length of those closing lines
    Walk next = Walk::on;
    if (!text.reserve(0)) {
        return nullptr;
    }
    text.data[0] = '\0';
    expr_walk(
        ConstCell{&root},
        [&](ConstCell cell, const WalkPlace& at) {
            const bool function = (*cell)->kind == FUNCTION;
            const char* name = op_name((*cell)->op);
            const std::size_t indent = at.depth * kTextIndent;
            const std::size_t closing = function ? indent + 2 : 0;
            if (!text.reserve(indent + std::strlen(name) + 5 + owed + closing)) {
                return next = Walk::out;
            }
            owed += closing;
            text.append(indent, "( ");
            text.append(0, name);
            text.append(0, function ? "\n" : " )\n");
            return Walk::on;
        },
        [&](ConstCell cell, const WalkPlace& at) {
            if ((*cell)->kind == FUNCTION) {
                text.append(at.depth * kTextIndent, ")\n");
                owed -= at.depth * kTextIndent + 2;
            }
            return next;
        });
    if (text.length == 0 && root != nullptr) {
        std::free(text.data);
        return nullptr;
    }
    return text.data;
}

void expr_write(const ExprNode* root, std::FILE* file) {
    const auto indent = [&](const WalkPlace& at) { write_blanks(file, at.depth * kFileIndent); };
    expr_walk(
        ConstCell{&root},
        [&](ConstCell cell, const WalkPlace& at) {
            indent(at);
            std::fputs("( ", file);
            std::fputs(op_name((*cell)->op), file);
            std::fputs((*cell)->kind == FUNCTION ? "\r\n" : " )\r\n", file);
            return Walk::on;
        },
        [&](ConstCell cell, const WalkPlace& at) {
            if ((*cell)->kind == FUNCTION) {
                indent(at);
                std::fputs(")\r\n", file);
            }
            return Walk::on;
        });
}

void expr_write_line(const ExprNode* root, std::FILE* file) {
    expr_walk(
        ConstCell{&root},
        [&](ConstCell cell, const WalkPlace&) {
            std::fputs(" ( ", file);
            std::fputs(op_name((*cell)->op), file);
            if ((*cell)->kind == FUNCTION) {
                std::fputc(' ', file);
            }
            return Walk::on;
        },
        [&](ConstCell, const WalkPlace&) {
            std::fputs(" ) ", file);
            return Walk::on;
        });
}

void write_blanks(std::FILE* file, std::size_t count) {
    static constexpr char kBlanks[] =
        "                                                                ";
    constexpr std::size_t kPiece = sizeof kBlanks - 1;
    for (; count > kPiece; count -= kPiece) {
        std::fwrite(kBlanks, 1, kPiece, file);
    }
    std::fwrite(kBlanks, 1, count, file);
}

} // namespace pelmora
