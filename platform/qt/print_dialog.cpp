#include "platform/qt/print_dialog.h"

#include "platform/qt/toolkit_dialog.h"
#include "platform/qt/window.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QToolButton>

namespace platform {

namespace {

// The toolkit asks about the file that it prints to in loops of its own, which stop every window
// and in which none is painted. So this dialog asks in its place.
class PrintDialog final : public QPrintDialog {
  public:
    PrintDialog(QPrinter* target, QWidget* behind, HWND owner)
        : QPrintDialog(target, behind), owner_(owner),
          file_(findChild<QLineEdit*>(QStringLiteral("filename"))) {
        auto* buttons = findChild<QDialogButtonBox*>();
        auto* browse = findChild<QToolButton*>(QStringLiteral("fileBrowser"));
        if (file_ == nullptr || buttons == nullptr || browse == nullptr) {
            return; // a toolkit that is built otherwise asks for itself
        }
        buttons->disconnect(this);
        QObject::connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        QObject::connect(buttons, &QDialogButtonBox::accepted, this, [this] {
            if (!file_->isEnabled() || file_agreed(file_->text())) {
                accept();
            }
        });
        QObject::disconnect(browse, &QToolButton::clicked, nullptr, nullptr);
        QObject::connect(browse, &QToolButton::clicked, this, [this] { browse_for_file(); });
    }

    // Only one page is ever printed, and the toolkit offers ranges whatever the options.
    void setVisible(bool visible) override {
        QPrintDialog::setVisible(visible);
        if (auto* range = findChild<QWidget*>(QStringLiteral("gbPrintRange"))) {
            range->hide();
        }
    }

  private:
    bool file_agreed(const QString& path) {
        const QFileInfo file(path);
        const QFileInfo written(file.exists() ? path : file.absolutePath());
        if (path.isEmpty() || file.isDir() || !written.isWritable()) {
            ask_over(*this, owner_, windowTitle(),
                     path + (file.isDir() ? " is a folder." : " cannot be written.") +
                         "\nPlease choose a different file name.",
                     QMessageBox::Ok);
            return false;
        }
        return !file.exists() || ask_over(*this, owner_, windowTitle(),
                                          path + " already exists.\nDo you want to replace it?",
                                          QMessageBox::Yes | QMessageBox::No);
    }

    void browse_for_file() {
        const QPointer<QFileDialog> browser = new QFileDialog(this, windowTitle(), file_->text());
        browser->setAcceptMode(QFileDialog::AcceptSave);
        browser->setOption(QFileDialog::DontConfirmOverwrite); // asked when all is chosen
        if (run_toolkit_dialog(browser.data(), owner_) && browser != nullptr) {
            file_->setText(browser->selectedFiles().value(0));
            auto* printers = findChild<QComboBox*>(QStringLiteral("printers"));
            printers->setCurrentIndex(printers->count() - 1); // the file
        }
        delete browser; // null when this dialog is gone, too
    }

    HWND owner_;
    QLineEdit* file_; // enabled while the printer is a file
};

} // namespace

bool choose_printer(QPrinter& printer, HWND owner) {
    const Window* behind = window_of(owner);
    const QPointer<QPrintDialog> dialog =
        new PrintDialog(&printer, behind != nullptr ? behind->widget() : nullptr, owner);
    const bool chosen = run_toolkit_dialog(dialog.data(), owner);
    delete dialog;
    return chosen;
}

} // namespace platform
