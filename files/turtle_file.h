// Turtle program files: one program as indented text behind one line that readers drop ("1").
#pragma once

#include "model/expr.h"
#include "platform/win32.h"

#include <string>

namespace pelmora {

// Asks for a name and writes `tree` (null: an empty program) under it. A file that cannot be
// written is not mentioned to the user; when it was, the status line says so.
void SaveTurtleFile(HWND owner, const ExprNode* tree);

// Asks for a file and returns its program, which the caller owns; null when there is none. The user
// is told when the file cannot be read, the error log when its text does not parse. The owner may
// be gone afterwards.
ExprNode* LoadTurtleFile(HWND owner);

// The program of a file's text: without its first line if it has a line break. The caller owns it;
// null when it does not parse.
ExprNode* parse_turtle_file_text(const char* text);

// Writes the file without asking; false when it could not be written.
bool write_turtle_file(const std::string& path, const ExprNode* tree);

} // namespace pelmora
