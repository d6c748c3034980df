#include "files/population_file.h"

#include "files/file_dialog.h"
#include "files/loaded_text.h"
#include "files/saved_file.h"
#include "model/parse.h"
#include "model/print.h"
#include "services/message.h"
#include "services/status.h"
#include "services/wait_cursor.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace pelmora {
namespace {

constexpr char kFilter[] = "Population Files\0*.lpf\0All Files\0*.*\0";
constexpr char kLineBreaks[] = "\r\n";

bool is_line_break(char c) {
    return c == '\r' || c == '\n';
}

void store_program(Lifer* lifer, ExprNode* tree, const ProgramReplaced& replaced) {
    const ExprTree old(lifer->program);
    lifer_set_program(lifer, tree);
    if (old != nullptr) {
        replaced(old.get());
    }
}

// Loads a file; returns the message for the user.
std::string load_population(const std::string& path, Population* pop,
                            const ProgramReplaced& replaced) {
    const WaitCursor wait;
    const LoadedText loaded = load_text(path);
    if (loaded.text == nullptr) {
        return loaded.failure;
    }
    const int stored = store_population_text(loaded.text.get(), pop, replaced);
    return "Loaded " + std::to_string(stored) + " turtles.";
}

} // namespace

int SavePopulationFile(HWND owner, const PopulationGetter& get_population) {
    const std::string name = AskSaveName(owner, kFilter, Overwrite::ask, ".lpf");
    if (name.empty()) {
        return 0;
    }
    const WaitCursor wait;
    const Population* pop = get_population();
    if (pop == nullptr || !write_population_file(name, pop)) {
        return 0;
    }
    SetStatusText("Sucessfully saved turtle population.");
    return 1;
}

int LoadPopulationFile(HWND owner, const PopulationGetter& get_population,
                       const ProgramReplaced& replaced) {
    const std::string name = AskOpenName(owner, kFilter);
    Population* pop = name.empty() ? nullptr : get_population();
    if (pop != nullptr) {
        ShowMessage(owner, load_population(name, pop, replaced).c_str());
    }
    return 1;
}

bool write_population_file(const std::string& path, const Population* pop) {
    SavedFile file(path);
    if (file.stream() == nullptr) {
        return false;
    }
    std::fprintf(file.stream(), "%d%s", kFileVersion, kFileLineEnd);
    for (int i = 0; i < pop->size; ++i) {
        expr_write_line(pop->lifers[i].program, file.stream());
        std::fputs(kFileLineEnd, file.stream());
    }
    return file.commit();
}

int store_population_text(char* text, Population* pop, const ProgramReplaced& replaced) {
    if (is_line_break(*text)) {
        const auto place = static_cast<unsigned long>(reinterpret_cast<std::uintptr_t>(text));
        std::fprintf(stderr, "LOAD POP: improper file at %d: [16]'%.16s' ptr x%lX save x%lX\n", 0,
                     text, place, place);
        return 0;
    }
    int stored = 0;
    bool first = true;
    int faults_left = kMaxParseFaults; // of the whole file
    for (char* line = text; *line != '\0' && stored < pop->size; first = false) {
        char* end = line + std::strcspn(line, kLineBreaks);
        char* next = end + std::strspn(end, kLineBreaks);
        *end = '\0';
        ExprNode* tree = first ? nullptr : parse_expr(line, &faults_left);
        if (tree != nullptr) {
            store_program(&pop->lifers[stored++], tree, replaced);
        }
        line = next;
    }
    return stored;
}

} // namespace pelmora
