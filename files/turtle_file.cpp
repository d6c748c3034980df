#include "files/turtle_file.h"

#include "files/file_dialog.h"
#include "files/loaded_text.h"
#include "files/saved_file.h"
#include "model/parse.h"
#include "model/print.h"
#include "services/message.h"
#include "services/status.h"

#include <cstdio>
#include <cstring>

namespace pelmora {
namespace {

constexpr char kOpenFilter[] = "Turtle Programs\0*.TXT\0All Files\0*.*\0";
constexpr char kSaveFilter[] = "Expression Files\0*.TXT\0All Files\0*.*\0";

} // namespace

void SaveTurtleFile(HWND owner, const ExprNode* tree) {
    const std::string name = AskSaveName(owner, kSaveFilter, Overwrite::ask, ".txt");
    if (!name.empty() && write_turtle_file(name, tree)) {
        SetStatusText("Sucessfully saved turtle expression.");
    }
}

ExprNode* LoadTurtleFile(HWND owner) {
    const std::string name = AskOpenName(owner, kOpenFilter);
    if (name.empty()) {
        return nullptr;
    }
    const LoadedText loaded = load_text(name);
    if (loaded.text == nullptr) {
        ShowMessage(owner, loaded.failure.c_str());
        return nullptr;
    }
    return parse_turtle_file_text(loaded.text.get());
}

ExprNode* parse_turtle_file_text(const char* text) {
    const std::size_t first_line = std::strcspn(text, "\r\n");
    const char* rest = text + first_line;
    return parse_expr(*rest == '\0' ? text : rest);
}

bool write_turtle_file(const std::string& path, const ExprNode* tree) {
    SavedFile file(path);
    if (file.stream() == nullptr) {
        return false;
    }
    std::fprintf(file.stream(), "%d%s", kFileVersion, kFileLineEnd);
    expr_write(tree, file.stream());
    return file.commit();
}

} // namespace pelmora
