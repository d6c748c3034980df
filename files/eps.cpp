#include "files/eps.h"

#include "files/file_dialog.h"
#include "files/saved_file.h"
#include "model/print.h"
#include "model/walk.h"
#include "services/status.h"

#include <array>
#include <cstddef>
#include <ctime>
#include <string>

namespace pelmora {
namespace {

constexpr char kFilter[] = "PostScript Files\0*.EPS\0Text Files\0*.TXT\0All Files\0*.*\0";

// The fixed lines of the document. These procedures run the turtle in a PostScript interpreter; a
// raised pen draws in white.
constexpr const char* kProcedures[] = {
    "/chksteps { STEPS MAXSTEPS gt { exit } if } def",
    "/incrstep { 1 STEPS add /STEPS exch def chksteps } def",
    "/forward { dup 0 rlineto 0 translate",
    "\tcurrentpoint",
    "\tstroke",
    "\tmoveto",
    "\tincrstep } bind def",
    "/right { rotate incrstep } bind def",
    "/left { neg rotate incrstep } bind def",
    "/penup { 1 setgray /PENUP 1 def incrstep } def",
    "/pendown { 0 setgray /PENUP 0 def incrstep } def",
    "/PENRED 0 def",
    "/PENGRN 0 def",
    "/PENBLU 0 def",
    "/setpen { PENRED 256.0 div PENGRN 256.0 div PENBLU 256.0 div setrgbcolor } def",
    "/addred { PENRED add 256 mod /PENRED exch def setpen incrstep } def",
    "/addgrn { PENGRN add 256 mod /PENGRN exch def setpen incrstep } def",
    "/addblu { PENBLU add 256 mod /PENBLU exch def setpen incrstep } def",
    "/ispenup { 1 PENUP eq incrstep } def",
    "/ispendown { 1 PENUP ne incrstep } def",
    "/dot { } def",
    "/Tsave { } def",
    "/Trestore { } def",
    "/pushmark { } def",
    "/popmark { } def",
    "%",
    "% End of EPS function definitions",
    "%",
    "",
    "%",
    "% Define the logo turtle's program in PostScript",
    "%",
    "/logoexpr {",
    "   0 0 moveto",
};

constexpr const char* kTrailer[] = {
    "} def",
    "",
    "%",
    "% End of logo turtle's program definition",
    "%",
    "",
    "%",
    "% Begin Suffix",
    "%",
    "",
    "0.1 setlinewidth",
    "pendown",
    "logoexpr",
    "stroke",
    "%",
    "% End of logo turtle EPS file",
    "%",
};

template <std::size_t count>
void write_lines(std::FILE* file, const char* const (&lines)[count]) {
    for (const char* line : lines) {
        std::fprintf(file, "%s%s", line, kFileLineEnd);
    }
}

// Now, in local time, as "Sun Nov 08 09:05:03 2026": in English, independent of the locale.
std::string creation_date() {
    constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const std::time_t now = std::time(nullptr);
    const std::tm* local = std::localtime(&now);
    if (local == nullptr) { // the year is out of range
        return "Thu Jan 01 00:00:00 1970";
    }
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%s %s %02d %02d:%02d:%02d %04d", kDays[local->tm_wday],
                  kMonths[local->tm_mon], local->tm_mday, local->tm_hour, local->tm_min,
                  local->tm_sec, local->tm_year + 1900);
    return text.data();
}

void write_header(std::FILE* file, const RECT& bounds, std::int32_t max_steps) {
    const std::string values[] = {
        "%!PS-Adobe-3.0 EPSF-3.0",
        "%%BoundingBox: " + std::to_string(bounds.left) + " " + std::to_string(bounds.top) + " " +
            std::to_string(bounds.right) + " " + std::to_string(bounds.bottom),
        "%%Title: Pelmora 3.5, https://pelmora.example",
        "%%Creator: The Pelmora developers <pelmora@pelmora.example>",
        "%%CreationDate: " + creation_date(),
        "%%EndComments",
        "",
        "%",
        "% EPS function definitions",
        "%",
        "/STEPS 0 def",
        "/MAXSTEPS " + std::to_string(max_steps) + " def",
    };
    for (const std::string& line : values) {
        std::fprintf(file, "%s%s", line.c_str(), kFileLineEnd);
    }
}

// Writes the body. A node's line or block is indented by its depth, the root's being 1.
class BodyWriter {
  public:
    explicit BodyWriter(std::FILE* file) : file_(file) {}

    // A node before its children. The third and later children of a branch never run.
    Walk enter(const ExprNode* node, const WalkPlace& at) const {
        if (at.parent != nullptr && is_branch(at.parent)) {
            if (at.index >= kBranches) {
                return Walk::out;
            }
            if (at.index > 0) {
                next_branch(at.depth);
            }
        }
        open(node, at.depth + 1);
        return Walk::on;
    }

    // A node after its children.
    void leave(const ExprNode* node, const WalkPlace& at) const {
        const std::size_t depth = at.depth + 1;
        const OpFamily family = family_of(node);
        if (family == OpFamily::block) {
            line(depth, "");
        } else if (family == OpFamily::branch) {
            missing_branches(node, depth);
            line(depth, "}");
            line(depth, "ifelse");
        } else if (family == OpFamily::repeat) {
            line(depth, "}");
            line(depth, "repeat");
        }
    }

    void missing(std::size_t depth) const { line(depth, "noop"); }

  private:
    static constexpr int kBranches = 2;

    static OpFamily family_of(const ExprNode* node) { return op_instruction(node->op)->family; }
    static bool is_branch(const ExprNode* node) { return family_of(node) == OpFamily::branch; }

    void line(std::size_t depth, const std::string& text) const {
        constexpr std::size_t kIndent = 3;
        write_blanks(file_, depth * kIndent);
        std::fprintf(file_, "%s%s", text.c_str(), kFileLineEnd);
    }

    void open(const ExprNode* node, std::size_t depth) const {
        const Instruction* instruction = op_instruction(node->op);
        const int parameter = instruction->parameter;
        const auto number = [&](const char* procedure) {
            line(depth, std::to_string(parameter < 0 ? -parameter : parameter) + procedure);
        };
        switch (instruction->family) {
        case OpFamily::pen:
            return line(depth, parameter == 1 ? "penup" : "pendown");
        case OpFamily::forward:
            return number(" forward");
        case OpFamily::turn:
            return number(parameter < 0 ? " left" : " right");
        case OpFamily::red:
            return number(" addred");
        case OpFamily::green:
            return number(" addgrn");
        case OpFamily::blue:
            return number(" addblu");
        case OpFamily::block:
            return line(depth, "");
        case OpFamily::branch:
            line(depth, parameter == 1 ? "ispenup" : "ispendown");
            return line(depth, "{");
        case OpFamily::repeat:
            number("");
            return line(depth, "{");
        }
    }

    void next_branch(std::size_t depth) const {
        line(depth, "}");
        line(depth, "{");
    }

    void missing_branches(const ExprNode* node, std::size_t depth) const {
        for (int i = node->count; i < kBranches; ++i) {
            if (i > 0) {
                next_branch(depth);
            }
            missing(depth + 1);
        }
    }

    std::FILE* file_;
};

bool write_file(const std::string& path, DrawContext* ctx, const ExprNode* tree) {
    SavedFile file(path);
    if (file.stream() == nullptr) {
        return false;
    }
    const RECT bounds = draw_measure(ctx, tree);
    eps_write(file.stream(), tree, bounds, ctx->max_steps);
    return file.commit();
}

} // namespace

void SaveTurtleEPS(HWND owner, DrawContext* ctx, const ExprNode* tree) {
    const std::string name = AskSaveName(owner, kFilter, Overwrite::silently, ".eps");
    if (!name.empty() && write_file(name, ctx, tree)) {
        SetStatusText("Sucessfully saved turtle PostScript.");
    }
}

void eps_write(std::FILE* file, const ExprNode* tree, const RECT& bounds, std::int32_t max_steps) {
    write_header(file, bounds, max_steps);
    write_lines(file, kProcedures);
    eps_write_expr(tree, file);
    write_lines(file, kTrailer);
}

void eps_write_expr(const ExprNode* tree, std::FILE* file) {
    using Cell = const ExprNode* const*;
    const BodyWriter body(file);
    if (tree == nullptr) {
        body.missing(1);
        return;
    }
    expr_walk(
        Cell{&tree}, [&](Cell cell, const WalkPlace& at) { return body.enter(*cell, at); },
        [&](Cell cell, const WalkPlace& at) {
            body.leave(*cell, at);
            return Walk::on;
        });
}

} // namespace pelmora
