// What the commands that exchange one turtle need of the window it is selected in.
#pragma once

#include "model/expr.h"
#include "turtle/draw.h"

#include <functional>

namespace pelmora {

// Valid for as long as the window lives: after a dialog ask IsWindow() before touching it.
struct SelectedTurtle {
    DrawContext* drawContext;
    const ExprNode* program; // null: an empty program
    // Makes the tree, which it takes over, the selected lifer's program.
    std::function<void(ExprNode* tree)> replace;
};

} // namespace pelmora
