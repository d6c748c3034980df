// The file dialogs: the desktop's native ones where they exist, otherwise the toolkit's.
#include "comdlg/toolkit_dialog.h"
#include "user/window.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <cstring>

namespace platform {

namespace {

// The folder of the last chosen file, where the next dialog starts.
QString& last_folder() {
    static QString folder;
    return folder;
}

// A pattern that ignores case in every dialog: native dialogs match case, the toolkit's does not.
// As on Windows, "*.*" also matches names without a dot.
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

// Converts filters to the toolkit's form. `pairs` ends with an empty text; null for none.
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

// Removes the quotation marks around a name, as Windows does.
QString without_quotes(const QString& name) {
    const bool quoted = name.size() > 2 && name.startsWith('"') && name.endsWith('"');
    return quoted && name.count('"') == 2 ? name.mid(1, name.size() - 2) : name;
}

// Whether a path is a wildcard pattern instead of a file name.
bool is_pattern(const QString& path) {
    const QString name = path.section('/', -1);
    return (name.contains('*') || name.contains('?')) && !QFileInfo::exists(path);
}

// Writes the path into the request. False when it does not fit.
bool deliver(const QString& path, const OPENFILENAMEA& request) {
    const QByteArray name = QFile::encodeName(path);
    const auto bytes = static_cast<std::size_t>(name.size()) + 1;
    if (bytes > request.nMaxFile) {
        return false;
    }
    std::memcpy(request.lpstrFile, name.constData(), bytes);
    return true;
}

class FileDialog : public QFileDialog {
  public:
    FileDialog(QWidget* owner, OPENFILENAMEA& request)
        : QFileDialog(owner), owner_(request.hwndOwner), request_(request) {}

    // The toolkit disables its button for names that it refuses. Here the button stays enabled and
    // a refused name gets an explanation.
    void set_existing() { setFileMode(name_field() != nullptr ? AnyFile : ExistingFile); }
    void offer_button(QDialogButtonBox::StandardButton which) {
        if (auto* buttons = findChild<QDialogButtonBox*>()) {
            buttons->button(which)->installEventFilter(this);
            buttons->button(which)->setEnabled(true);
        }
    }

    // Runs the dialog until a name is accepted. False when the user cancelled (the dialog may be
    // destroyed then) or when the name does not fit. A native dialog closes with any name, so it is
    // opened again after a refused one.
    static bool run(const QPointer<FileDialog>& dialog, HWND owner) {
        while ((owner == nullptr || IsWindow(owner)) && run_toolkit_dialog(dialog.data(), owner) &&
               dialog != nullptr) {
            if (dialog->name_field() != nullptr ||
                dialog->acceptable(dialog->selectedFiles().value(0))) {
                return dialog->fits_;
            }
        }
        return false;
    }

    bool ask(const QString& title, const QString& text, QMessageBox::StandardButtons buttons) {
        return ask_over(*this, owner_, title, text, buttons);
    }

  protected:
    bool eventFilter(QObject* button, QEvent* event) override {
        if (event->type() == QEvent::EnabledChange) {
            static_cast<QWidget*>(button)->setEnabled(true);
        }
        return QFileDialog::eventFilter(button, event);
    }

    // Replaces the toolkit's checks: their questions run in event loops in which our windows are
    // not painted, and they split a name at its quotation marks.
    void accept() override {
        QLineEdit* field = name_field();
        if (field == nullptr) {
            QFileDialog::accept();
            return;
        }
        const QString path = path_of(*field);
        if (QFileInfo(path).isDir()) {
            setDirectory(path);
            field->clear();
            field->setFocus();
            return;
        }
        if (!path.isEmpty() && acceptable(path)) {
            QDialog::accept(); // NOLINT(bugprone-parent-virtual-call): skips the toolkit's checks
        }
    }

  private:
    // Null in a native dialog.
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
        if (path.isEmpty() || is_pattern(path)) {
            return false;
        }
        const QFileInfo file(path);
        if ((request_.Flags & OFN_PATHMUSTEXIST) != 0 && !QFileInfo(file.path()).isDir()) {
            return refuse(path, "Path does not exist.\nCheck the path and try again.");
        }
        if ((request_.Flags & OFN_FILEMUSTEXIST) != 0 && !file.exists()) {
            return refuse(path, "File not found.\nCheck the file name and try again.");
        }
        fits_ = deliver(path, request_); // if not, run() returns false
        return !fits_ || hook_agrees();
    }

    bool refuse(const QString& path, const char* reason) {
        ask(windowTitle(), path + '\n' + reason, QMessageBox::Ok);
        return false;
    }

    bool hook_agrees();

    HWND owner_;
    OPENFILENAMEA& request_;
    bool fits_ = false; // the accepted name fits into the request
};

// The handle that a hook gets for the dialog. It exists only during the hook's call, so that the
// dialog's keys are not queued as messages.
class HookWindow final : public Window {
  public:
    explicit HookWindow(FileDialog& dialog) : dialog_(dialog) {
        extra().resize(DWLP_MSGRESULT + sizeof(LONG_PTR));
    }
    QWidget* widget() const override { return &dialog_; }
    FileDialog& dialog() const { return dialog_; }
    LRESULT receive(UINT, WPARAM, LPARAM) override { return 0; }
    void dismantle() override {}

  private:
    FileDialog& dialog_;
};

bool FileDialog::hook_agrees() {
    if ((request_.Flags & OFN_ENABLEHOOK) == 0 || request_.lpfnHook == nullptr) {
        return true;
    }
    const auto hook = std::make_shared<HookWindow>(*this);
    keep_window(hook);
    OFNOTIFYA notice{{hook->handle(), 0, CDN_FILEOK}, &request_};
    const bool refused =
        request_.lpfnHook(hook->handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice)) != 0 &&
        GetWindowLongPtrA(hook->handle(), DWLP_MSGRESULT) != 0;
    forget_window(hook->handle());
    return !refused;
}

void set_up(QFileDialog& dialog, const OPENFILENAMEA& request) {
    const QString folder = last_folder();
    dialog.setDirectory(!folder.isEmpty() && QDir(folder).exists() ? folder : QDir::currentPath());
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    const QStringList filters = name_filters(request.lpstrFilter);
    if (!filters.isEmpty()) {
        dialog.setNameFilters(filters);
        dialog.selectNameFilter(filters.value(static_cast<int>(request.nFilterIndex) - 1));
    }
}

BOOL show(OPENFILENAMEA& request, QFileDialog::AcceptMode accept) {
    const bool save = accept == QFileDialog::AcceptSave;
    const Window* owner = window_of(request.hwndOwner);
    const QPointer<FileDialog> dialog =
        new FileDialog(owner != nullptr ? owner->widget() : nullptr, request);
    dialog->setWindowTitle(save ? QStringLiteral("Save As") : QStringLiteral("Open"));
    dialog->setAcceptMode(accept);
    if (!save && (request.Flags & OFN_FILEMUSTEXIST) != 0) {
        dialog->set_existing();
    }
    dialog->offer_button(save ? QDialogButtonBox::Save : QDialogButtonBox::Open);
    set_up(*dialog, request);
    const bool chosen = FileDialog::run(dialog, request.hwndOwner);
    delete dialog;
    if (chosen) {
        last_folder() = QFileInfo(QFile::decodeName(request.lpstrFile)).absolutePath();
    }
    return chosen ? TRUE : FALSE;
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

int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type) {
    const auto* hook = dynamic_cast<const HookWindow*>(window_of(owner));
    if (hook == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return 0;
    }
    const bool question = (type & MB_YESNO) != 0;
    const bool yes = hook->dialog().ask(QString::fromUtf8(caption), QString::fromUtf8(text),
                                        question ? QMessageBox::Yes | QMessageBox::No
                                                 : QMessageBox::StandardButtons(QMessageBox::Ok));
    return yes ? IDYES : question ? IDNO : IDOK;
}
