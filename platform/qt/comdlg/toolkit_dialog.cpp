#include "comdlg/toolkit_dialog.h"

#include "frames/modal_loop.h"
#include "user/message_loop.h"
#include "user/window.h"

#include <memory>
#include <utility>

namespace platform {

namespace {

// The dialog's outcome. Shared with the signal handler, which may run after run_toolkit_dialog().
struct Outcome {
    HWND owner;
    bool finished = false;
    bool accepted = false;
    bool owner_blocked = true;
};

// Unblocks the owner at once, even while the loop of a dialog that was opened later is still nested
// in this one's.
void unblock_owner(Outcome& outcome) {
    Window* window = window_of(outcome.owner);
    if (std::exchange(outcome.owner_blocked, false) && window != nullptr) {
        window->unblock();
        window->widget()->activateWindow();
    }
}

} // namespace

bool run_toolkit_dialog(const QPointer<QDialog>& dialog, HWND owner) {
    const auto outcome = std::make_shared<Outcome>(Outcome{.owner = owner});
    QObject::connect(dialog, &QDialog::finished, dialog, [outcome](int result) {
        outcome->finished = true;
        outcome->accepted = result == QDialog::Accepted;
        unblock_owner(*outcome);
        post(nullptr, WM_NULL, 0, 0); // wakes the loop
    });
    dialog->setWindowModality(Qt::WindowModal);
    if (Window* window = window_of(owner)) {
        window->block();
    }
    dialog->show();
    run_modal_loop([&] {
        return !outcome->finished && dialog != nullptr && (owner == nullptr || IsWindow(owner));
    });
    if (dialog != nullptr) {
        dialog->hide();
    }
    unblock_owner(*outcome);
    return outcome->finished && outcome->accepted && (owner == nullptr || IsWindow(owner));
}

bool ask_over(QDialog& dialog, HWND owner, const QString& title, const QString& text,
              QMessageBox::StandardButtons buttons) {
    const QPointer<QDialog> watched = &dialog;
    // A native dialog is closed by now.
    QWidget* behind = dialog.isVisible() ? &dialog : dialog.parentWidget();
    const QPointer<QMessageBox> box =
        new QMessageBox(QMessageBox::Warning, title, text, buttons, behind);
    box->setTextFormat(Qt::PlainText);
    box->setEscapeButton(buttons.testFlag(QMessageBox::No) ? QMessageBox::No : QMessageBox::Ok);
    box->setDefaultButton(QMessageBox::No);
    run_toolkit_dialog(box.data(), owner);
    const bool agreed = box != nullptr && box->result() == QMessageBox::Yes;
    delete box;
    if (watched == nullptr) {
        return false;
    }
    if (owner != nullptr && !IsWindow(owner)) {
        dialog.reject();
    }
    dialog.activateWindow();
    return agreed;
}

} // namespace platform
