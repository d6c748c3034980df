#include "comdlg/toolkit_dialog.h"

#include "frames/modal_loop.h"
#include "user/message_loop.h"
#include "user/window.h"

#include <memory>
#include <utility>

namespace platform {

namespace {

// What the dialog's end is told to. Shared with its signal, which may come late.
struct Ending {
    HWND owner;
    bool finished = false;
    bool accepted = false;
    bool owner_blocked = true;
};

// The owner hears its user again at once, even while the loop of a dialog that was opened later
// still runs inside that of this one.
void give_back_owner(Ending& ending) {
    Window* window = window_of(ending.owner);
    if (std::exchange(ending.owner_blocked, false) && window != nullptr) {
        window->unblock();
        window->widget()->activateWindow();
    }
}

} // namespace

bool run_toolkit_dialog(const QPointer<QDialog>& dialog, HWND owner) {
    const auto ending = std::make_shared<Ending>(Ending{.owner = owner});
    QObject::connect(dialog, &QDialog::finished, dialog, [ending](int result) {
        ending->finished = true;
        ending->accepted = result == QDialog::Accepted;
        give_back_owner(*ending);
        post(nullptr, WM_NULL, 0, 0); // the loop may be asleep
    });
    dialog->setWindowModality(Qt::WindowModal);
    if (Window* window = window_of(owner)) {
        window->block();
    }
    dialog->show();
    run_modal_loop([&] {
        return !ending->finished && dialog != nullptr && (owner == nullptr || IsWindow(owner));
    });
    if (dialog != nullptr) {
        dialog->hide();
    }
    give_back_owner(*ending);
    return ending->finished && ending->accepted && (owner == nullptr || IsWindow(owner));
}

bool ask_over(QDialog& dialog, HWND owner, const QString& title, const QString& text,
              QMessageBox::StandardButtons buttons) {
    const QPointer<QDialog> asker = &dialog;
    // A desktop's own dialog is closed by now.
    QWidget* behind = dialog.isVisible() ? &dialog : dialog.parentWidget();
    const QPointer<QMessageBox> box =
        new QMessageBox(QMessageBox::Warning, title, text, buttons, behind);
    box->setTextFormat(Qt::PlainText);
    box->setEscapeButton(buttons.testFlag(QMessageBox::No) ? QMessageBox::No : QMessageBox::Ok);
    box->setDefaultButton(QMessageBox::No);
    run_toolkit_dialog(box.data(), owner);
    const bool agreed = box != nullptr && box->result() == QMessageBox::Yes;
    delete box;
    if (asker == nullptr) {
        return false;
    }
    if (owner != nullptr && !IsWindow(owner)) {
        dialog.reject();
    }
    dialog.activateWindow();
    return agreed;
}

} // namespace platform
