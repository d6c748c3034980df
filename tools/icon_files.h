// The files that an icon is kept in. Each function returns the file's content.
#pragma once

#include "model/expr.h"

#include <string>

namespace icon {

// All sizes that Windows uses, with partial transparency. The same program always gives the same
// bytes.
std::string ico_file(const pelmora::ExprNode* program);

// The strokes as paths, for every size.
std::string svg_file(const pelmora::ExprNode* program);

// A picture of this many pixels in width and height.
std::string png_file(const pelmora::ExprNode* program, int size);

} // namespace icon
