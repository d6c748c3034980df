// Turtle program files: a first line that readers skip ("1"), then one program as indented text.
#pragma once

#include "model/expr.h"
#include "platform/win32.h"

#include <string>

namespace pelmora {

// Asks for a name and writes `tree` (null: an empty program) to it. The status line reports
// success; the user is not told of a failure.
void SaveTurtleFile(HWND owner, const ExprNode* tree);

// Asks for a file and returns its program, which the caller owns; null when there is none. The user
// is told when the file cannot be read; the error log says when its text does not parse. The owner
// may be destroyed afterwards.
ExprNode* LoadTurtleFile(HWND owner);

// The program of a file's text: without its first line if it has a line break. The caller owns it;
// null when it does not parse.
ExprNode* parse_turtle_file_text(const char* text);

// Writes the file without asking; false when it could not be written.
bool write_turtle_file(const std::string& path, const ExprNode* tree);

} // namespace pelmora
