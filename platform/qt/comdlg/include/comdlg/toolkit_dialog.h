// Dialogs that the toolkit or the desktop brings: for files and for printing.
#pragma once

#include "platform/win32.h"

#include <QDialog>
#include <QMessageBox>
#include <QPointer>

namespace platform {

// Shows the dialog over its owner (null: none), which takes no input meanwhile, and runs a message
// loop of its own until it is closed. True when it was accepted; false when it was rejected, when
// the owner was destroyed, or when the program is ending. The dialog may be gone afterwards, along
// with its owner; if not, the caller releases it.
bool run_toolkit_dialog(const QPointer<QDialog>& dialog, HWND owner);

// A question or a remark about what was entered in a dialog that runs over `owner`. It stops these
// two only. True when the user said yes; Return does not.
bool ask_over(QDialog& dialog, HWND owner, const QString& title, const QString& text,
              QMessageBox::StandardButtons buttons);

} // namespace platform
