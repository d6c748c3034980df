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

// Replaces the toolkit's questions about the output file: they run in event loops in which every
// window is blocked and none is painted.
class PrintDialog final : public QPrintDialog {
  public:
    PrintDialog(QPrinter* target, QWidget* behind, HWND owner)
        : QPrintDialog(target, behind), owner_(owner),
          file_(findChild<QLineEdit*>(QStringLiteral("filename"))),
          printers_(findChild<QComboBox*>(QStringLiteral("printers"))) {
        auto* buttons = findChild<QDialogButtonBox*>();
        auto* browse = findChild<QToolButton*>(QStringLiteral("fileBrowser"));
        if (file_ == nullptr || printers_ == nullptr || buttons == nullptr || browse == nullptr) {
            return; // a toolkit with other widgets asks its own questions
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

    // Hides the page range, which the toolkit always shows: only one page is printed.
    void setVisible(bool visible) override {
        QPrintDialog::setVisible(visible);
        if (auto* range = findChild<QWidget*>(QStringLiteral("gbPrintRange"))) {
            range->hide();
        }
        offer_copies();
    }

  private:
    // The number of copies has no effect on a file.
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
        browser->setOption(QFileDialog::DontConfirmOverwrite); // file_agreed() asks
        if (run_toolkit_dialog(browser.data(), owner_) && browser != nullptr) {
            file_->setText(browser->selectedFiles().value(0));
            printers_->setCurrentIndex(printers_->count() - 1); // print to file
        }
        if (browser != nullptr) { // else this dialog is destroyed, too
            delete browser;
            activateWindow();
        }
    }

    HWND owner_;
    QLineEdit* file_;     // enabled while printing to a file is selected
    QComboBox* printers_; // the last entry prints to a file
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
