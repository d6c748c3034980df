#include "files/clipboard.h"

#include "files/metafile.h"
#include "model/parse.h"
#include "model/print.h"
#include "model/text.h"
#include "services/message.h"
#include "services/wait_cursor.h"

#include <cstring>
#include <optional>

namespace pelmora {
namespace {

// Opens the clipboard, and shows the wait cursor until it is closed.
class Clipboard {
  public:
    explicit Clipboard(HWND owner) : open_(OpenClipboard(owner) != FALSE) {
        if (open_) {
            wait_.emplace();
        }
    }
    ~Clipboard() {
        if (open_) {
            CloseClipboard();
        }
    }
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;

    [[nodiscard]] bool is_open() const { return open_; }

  private:
    std::optional<WaitCursor> wait_; // destroyed after the clipboard is closed
    bool open_;
};

// Places a text; false when there is no memory for it.
bool place_text(const char* text) {
    const std::size_t bytes = std::strlen(text) + 1;
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    void* room = memory != nullptr ? GlobalLock(memory) : nullptr;
    if (room == nullptr) {
        GlobalFree(memory);
        return false;
    }
    std::memcpy(room, text, bytes);
    GlobalUnlock(memory);
    if (SetClipboardData(CF_TEXT, memory) == nullptr) {
        GlobalFree(memory);
    }
    return true;
}

void place_picture(const SelectedTurtle& turtle) {
    HENHMETAFILE picture = record_copied_picture(turtle);
    if (picture != nullptr && SetClipboardData(CF_ENHMETAFILE, picture) == nullptr) {
        DeleteEnhMetaFile(picture);
    }
}

// Places text and picture; false when there is no memory for the text.
bool place_turtle(const SelectedTurtle& turtle) {
    EmptyClipboard();
    const OwnedText text(turtle.program != nullptr ? expr_to_text(turtle.program) : nullptr);
    if (text != nullptr && !place_text(text.get())) {
        return false;
    }
    place_picture(turtle);
    return true;
}

// The program in the clipboard's text. False when it has no text.
bool read_program(ExprTree* tree) {
    HANDLE data = GetClipboardData(CF_TEXT);
    const void* text = data != nullptr ? GlobalLock(data) : nullptr;
    if (text == nullptr) {
        return false;
    }
    tree->reset(parse_expr(static_cast<const char*>(text)));
    GlobalUnlock(data);
    return true;
}

} // namespace

bool CopyTurtle(HWND owner, const SelectedTurtle& turtle) {
    const Clipboard clipboard(owner);
    if (!clipboard.is_open()) {
        ShowMessage(owner, "Could not open clipboard.");
        return false;
    }
    if (!place_turtle(turtle)) {
        ShowMessage(owner, "Could not allocate memory for Copy.");
        return false;
    }
    return true;
}

bool PasteTurtle(HWND owner, const SelectedTurtle& turtle) {
    if (!IsClipboardFormatAvailable(CF_TEXT)) {
        return false;
    }
    const Clipboard clipboard(owner);
    if (!clipboard.is_open()) {
        ShowMessage(owner, "Could not open clipboard.");
        return false;
    }
    ExprTree tree;
    if (!read_program(&tree)) {
        return false;
    }
    if (tree != nullptr) {
        turtle.replace(tree.release());
    } else {
        ShowMessage(owner, "Could not parse expression on Clipboard. It does not appear to be a "
                           "valid Tarnwick program.");
    }
    return false;
}

} // namespace pelmora
