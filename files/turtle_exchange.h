// The selected turtle of a window, for the commands that exchange it.
#pragma once

#include "model/expr.h"
#include "turtle/draw.h"

#include <functional>

namespace pelmora {

// Valid while the window exists: check IsWindow() after a dialog.
struct SelectedTurtle {
    DrawContext* drawContext;
    const ExprNode* program; // null: an empty program
    // Makes `tree`, which it then owns, the selected lifer's program.
    std::function<void(ExprNode* tree)> replace;
};

} // namespace pelmora
