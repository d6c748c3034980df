#include "comdlg/print_dialog.h"

#include "comdlg/toolkit_dialog.h"
#include "user/window.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QSpinBox>
#include <QToolButton>

namespace platform {

namespace {

// The toolkit asks about the file that it prints to in loops of its own, which stop every window
// and in which none is painted. So this dialog asks in its place.
class PrintDialog final : public QPrintDialog {
  public:
    PrintDialog(QPrinter* target, QWidget* behind, HWND owner)
        : QPrintDialog(target, behind), owner_(owner),
          file_(findChild<QLineEdit*>(QStringLiteral("filename"))),
          printers_(findChild<QComboBox*>(QStringLiteral("printers"))) {
        auto* buttons = findChild<QDialogButtonBox*>();
        auto* browse = findChild<QToolButton*>(QStringLiteral("fileBrowser"));
        if (file_ == nullptr || printers_ == nullptr || buttons == nullptr || browse == nullptr) {
            return; // a toolkit that is built otherwise asks for itself
        }
        buttons->disconnect(this);
        QObject::connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        QObject::connect(buttons, &QDialogButtonBox::accepted, this, [this] {
            if (!file_->isEnabled() || file_agreed(file_->text())) {
                accept();
            }
        });
        QObject::connect(printers_, &QComboBox::currentIndexChanged, this,
                         [this] { offer_copies(); });
        QObject::disconnect(browse, &QToolButton::clicked, nullptr, nullptr);
        QObject::connect(browse, &QToolButton::clicked, this, [this] { browse_for_file(); });
    }

    // Only one page is ever printed, and the toolkit offers ranges whatever the options.
    void setVisible(bool visible) override {
        QPrintDialog::setVisible(visible);
        if (auto* range = findChild<QWidget*>(QStringLiteral("gbPrintRange"))) {
            range->hide();
        }
        offer_copies();
    }

  private:
    // A file is written once, whatever number is asked for.
    void offer_copies() {
        auto* copies = findChild<QSpinBox*>(QStringLiteral("copies"));
        if (copies != nullptr && file_ != nullptr) {
            copies->setEnabled(!file_->isEnabled());
        }
    }

    bool file_agreed(const QString& path) {
        const QFileInfo file(path);
        const QFileInfo written(file.exists() ? path : file.absolutePath());
        if (path.isEmpty() || file.isDir() || !written.isWritable()) {
            const QString reason = path.isEmpty() ? QStringLiteral("The file has no name.")
                                   : file.isDir() ? path + " is a folder."
                                                  : path + " cannot be written.";
            ask_over(*this, owner_, windowTitle(),
                     reason + "\nPlease choose a different file name.", QMessageBox::Ok);
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
            printers_->setCurrentIndex(printers_->count() - 1); // the file
        }
        if (browser != nullptr) { // so is this dialog
            delete browser;
            activateWindow();
        }
    }

    HWND owner_;
    QLineEdit* file_;     // enabled while the printer is a file
    QComboBox* printers_; // the last is the file
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
