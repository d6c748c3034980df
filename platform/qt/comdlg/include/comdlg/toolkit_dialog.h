// Runs file and print dialogs of the toolkit or the desktop.
#pragma once

#include "platform/win32.h"

#include <QDialog>
#include <QMessageBox>
#include <QPointer>

namespace platform {

// Shows the dialog over its owner (null: none), blocks the owner's input and runs a message loop
// until the dialog is closed. True when it was accepted; false when it was rejected, when the owner
// was destroyed, or when the program quits. The dialog is destroyed with its owner; otherwise the
// caller deletes it.
bool run_toolkit_dialog(const QPointer<QDialog>& dialog, HWND owner);

// Shows a message box about the input of a dialog that runs over `owner`. Blocks these two only.
// True when the user pressed Yes, which is not the default button.
bool ask_over(QDialog& dialog, HWND owner, const QString& title, const QString& text,
              QMessageBox::StandardButtons buttons);

} // namespace platform
