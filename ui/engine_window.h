// The turtle editor: a window that shows one program's drawing large, up to a limit of steps that
// the user sets, so that the drawing can be watched while it grows. It owns its program and does
// not depend on the population window.
#pragma once

#include "model/expr.h"
#include "platform/accessible.h"
#include "platform/win32.h"
#include "turtle/draw.h"

#include <cstdint>
#include <memory>

namespace pelmora {

// The record of one editor, owned by its window.
struct EngineWindow {
    HWND hwnd = nullptr;
    HWND limitEdit = nullptr;
    DrawContext drawContext{};
    std::int32_t stepLimit = kDefaultMaxSteps; // as last taken from the edit field
    ExprTree tree;
    std::shared_ptr<platform::AccessibleContent> drawing; // what assistive technology is told of it
};

// A new hidden editor, which owns the program. Null when it could not be created: the user is told
// and the program released.
HWND CreateEngineWindow(HINSTANCE instance, ExprTree tree);

// The procedure of the editor's class.
LRESULT CALLBACK EngineWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

} // namespace pelmora
