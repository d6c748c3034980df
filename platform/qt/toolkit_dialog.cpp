#include "platform/qt/toolkit_dialog.h"

#include "platform/qt/message_loop.h"
#include "platform/qt/window.h"

namespace platform {

namespace {

// What the dialog's end is told to. Shared with its signal, which may come late.
struct Ending {
    bool finished = false;
    bool accepted = false;
};

void loop(const QPointer<QDialog>& dialog, HWND owner, const Ending& ending) {
    const bool owned = owner != nullptr;
    while (!ending.finished && dialog != nullptr && (!owned || IsWindow(owner))) {
        if (!handle_next_message()) {
            return;
        }
    }
}

} // namespace

bool run_toolkit_dialog(const QPointer<QDialog>& dialog, HWND owner) {
    const auto ending = std::make_shared<Ending>();
    QObject::connect(dialog, &QDialog::finished, dialog, [ending](int result) {
        *ending = {true, result == QDialog::Accepted};
        post(nullptr, WM_NULL, 0, 0); // the loop may be asleep
    });
    dialog->setWindowModality(Qt::WindowModal);
    if (Window* window = window_of(owner)) {
        window->block();
    }
    dialog->show();
    loop(dialog, owner, *ending);
    if (dialog != nullptr) {
        dialog->hide();
    }
    if (Window* window = window_of(owner)) {
        window->unblock();
        window->widget()->activateWindow();
    }
    return ending->finished && ending->accepted && (owner == nullptr || IsWindow(owner));
}

} // namespace platform
