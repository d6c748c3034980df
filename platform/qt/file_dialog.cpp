// The file dialogs: the desktop's own where it has one, the toolkit's otherwise.
#include "platform/qt/toolkit_dialog.h"
#include "platform/qt/window.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>

#include <cstring>

namespace platform {

namespace {

// The folder of the file chosen last in this run: the next dialog begins there.
QString& last_folder() {
    static QString folder;
    return folder;
}

// A pattern that matches without regard to case wherever it is read: desktops' own dialogs heed the
// case, the toolkit's does not. On Windows "*.*" is every file, with a dot or without.
QString portable_pattern(const QString& pattern) {
    if (pattern == QLatin1String("*.*")) {
        return QStringLiteral("*");
    }
    QString portable;
    for (const QChar c : pattern) {
        if (c == ';') {
            portable += ' ';
        } else if (c.toLower() != c.toUpper()) {
            portable += QStringLiteral("[%1%2]").arg(c.toLower()).arg(c.toUpper());
        } else {
            portable += c;
        }
    }
    return portable;
}

// The filters in the toolkit's form. `pairs` ends with an empty text; null is none.
QStringList name_filters(const char* pairs) {
    QStringList filters;
    while (pairs != nullptr && *pairs != '\0') {
        const QString text = QString::fromUtf8(pairs);
        pairs += std::strlen(pairs) + 1;
        filters << text + " (" + portable_pattern(QString::fromUtf8(pairs)) + ')';
        pairs += std::strlen(pairs) + 1;
    }
    return filters;
}

// A name in quotation marks stands for itself without them, as on Windows.
QString without_quotes(const QString& name) {
    const bool quoted = name.size() > 2 && name.startsWith('"') && name.endsWith('"');
    return quoted && name.count('"') == 2 ? name.mid(1, name.size() - 2) : name;
}

// Not a name to save under, but what was meant to narrow the list.
bool is_pattern(const QString& path) {
    const QString name = path.section('/', -1);
    return (name.contains('*') || name.contains('?')) && !QFileInfo::exists(path);
}

class FileDialog : public QFileDialog {
  public:
    FileDialog(QWidget* owner, HWND owner_handle, DWORD flags)
        : QFileDialog(owner), owner_(owner_handle), flags_(flags) {}

    // The toolkit's dialog would offer its button only for names that it has listed by then; this
    // one says why it refuses a name.
    void set_existing() { setFileMode(name_field() != nullptr ? AnyFile : ExistingFile); }

    // The full path that was chosen, as it was typed.
    QString chosen() const { return chosen_; }

  protected:
    // The toolkit's own checks ask their questions in loops in which our windows do not paint, and
    // they take a name apart at its quotation marks. So this decides for its dialog; a desktop's
    // dialog has decided already.
    void accept() override {
        QLineEdit* field = name_field();
        if (field == nullptr) {
            chosen_ = selectedFiles().value(0);
            QFileDialog::accept();
            return;
        }
        const QString path = path_of(*field);
        if (QFileInfo(path).isDir()) {
            setDirectory(path);
            field->clear();
            field->setFocus(); // the disabled button would pass it on to Cancel
            return;
        }
        if (!path.isEmpty() && acceptable(path)) {
            chosen_ = path;
            QDialog::accept(); // NOLINT(bugprone-parent-virtual-call): not another look at the name
        }
    }

  private:
    // Null in a desktop's dialog.
    QLineEdit* name_field() const { return findChild<QLineEdit*>(QStringLiteral("fileNameEdit")); }

    QString path_of(const QLineEdit& field) const {
        const QString typed = field.text();
        if (!typed.contains('"')) {
            return selectedFiles().value(0);
        }
        const QDir folder = directory();
        const QString whole = folder.filePath(typed);
        return QFileInfo::exists(whole) ? whole : folder.filePath(without_quotes(typed));
    }

    bool acceptable(const QString& path) {
        if (is_pattern(path)) {
            return false;
        }
        const QFileInfo file(path);
        if ((flags_ & OFN_PATHMUSTEXIST) != 0 && !QFileInfo(file.path()).isDir()) {
            refuse(path + "\nPath does not exist.\nCheck the path and try again.");
            return false;
        }
        if ((flags_ & OFN_FILEMUSTEXIST) != 0 && !file.exists()) {
            refuse(path + "\nFile not found.\nCheck the file name and try again.");
            return false;
        }
        return (flags_ & OFN_OVERWRITEPROMPT) == 0 || !file.exists() ||
               ask(path + " already exists.\nDo you want to replace it?",
                   QMessageBox::Yes | QMessageBox::No);
    }

    // Tells what is wrong with the name; the dialog stays open.
    void refuse(const QString& text) { ask(text, QMessageBox::Ok); }

    // True when the user said yes.
    bool ask(const QString& text, QMessageBox::StandardButtons buttons) {
        const QPointer<QMessageBox> box =
            new QMessageBox(QMessageBox::Warning, windowTitle(), text, buttons, this);
        box->setTextFormat(Qt::PlainText);
        box->setEscapeButton(buttons.testFlag(QMessageBox::No) ? QMessageBox::No : QMessageBox::Ok);
        box->setDefaultButton(QMessageBox::No);
        run_toolkit_dialog(box.data(), owner_);
        const bool agreed = box != nullptr && box->result() == QMessageBox::Yes;
        delete box;
        if (owner_ != nullptr && !IsWindow(owner_)) {
            reject();
        }
        activateWindow();
        return agreed;
    }

    HWND owner_;
    DWORD flags_;
    QString chosen_;
};

void set_up(QFileDialog& dialog, const OPENFILENAMEA& request) {
    const QString folder = last_folder();
    dialog.setDirectory(!folder.isEmpty() && QDir(folder).exists() ? folder : QDir::currentPath());
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, (request.Flags & OFN_OVERWRITEPROMPT) == 0);
    const QStringList filters = name_filters(request.lpstrFilter);
    if (!filters.isEmpty()) {
        dialog.setNameFilters(filters);
        dialog.selectNameFilter(filters.value(static_cast<int>(request.nFilterIndex) - 1));
    }
}

// Puts the path into the request. False when it has no room.
bool deliver(const QString& path, const OPENFILENAMEA& request) {
    const QByteArray name = QFile::encodeName(path);
    const auto bytes = static_cast<std::size_t>(name.size()) + 1;
    if (bytes > request.nMaxFile) {
        return false;
    }
    std::memcpy(request.lpstrFile, name.constData(), bytes);
    return true;
}

BOOL show(const OPENFILENAMEA& request, QFileDialog::AcceptMode accept) {
    const bool save = accept == QFileDialog::AcceptSave;
    const Window* owner = window_of(request.hwndOwner);
    const QPointer<FileDialog> dialog = new FileDialog(owner != nullptr ? owner->widget() : nullptr,
                                                       request.hwndOwner, request.Flags);
    dialog->setWindowTitle(save ? QStringLiteral("Save As") : QStringLiteral("Open"));
    dialog->setAcceptMode(accept);
    if (!save && (request.Flags & OFN_FILEMUSTEXIST) != 0) {
        dialog->set_existing();
    }
    set_up(*dialog, request);
    QString path;
    while (path.isEmpty() && run_toolkit_dialog(dialog.data(), request.hwndOwner) &&
           dialog != nullptr) {
        path = is_pattern(dialog->chosen()) ? QString() : dialog->chosen();
    }
    delete dialog;
    if (path.isEmpty() || !deliver(path, request)) {
        return FALSE;
    }
    last_folder() = QFileInfo(path).absolutePath();
    return TRUE;
}

} // namespace

} // namespace platform

using namespace platform;

BOOL GetOpenFileNameA(OPENFILENAMEA* request) {
    return show(*request, QFileDialog::AcceptOpen);
}

BOOL GetSaveFileNameA(OPENFILENAMEA* request) {
    return show(*request, QFileDialog::AcceptSave);
}
