#include "controls/child_controls.h"

#include "base/text.h"
#include "controls/control_styles.h"
#include "controls/factory.h"
#include "gdi/text.h"

#include <QApplication>

#include <strings.h>

namespace platform {

namespace {

// 0 when the class is not known.
std::uint16_t class_number(LPCSTR name) {
    if (::strcasecmp(name, "EDIT") == 0) {
        return kEditClass;
    }
    if (::strcasecmp(name, "STATIC") == 0) {
        return kStaticClass;
    }
    return ::strcasecmp(name, "BUTTON") == 0 ? kButtonClass : std::uint16_t{0};
}

Control* find_control(HWND handle, int id) {
    Window* window = window_of(handle);
    const Controls* controls = window != nullptr ? window->controls() : nullptr;
    return controls != nullptr ? controls->find(id) : nullptr;
}

QByteArray text_of(const Control* control) {
    return control != nullptr ? control->text().toUtf8() : QByteArray();
}

} // namespace

HWND create_child(const ChildDesign& design, const QRect& area, HWND parent) {
    const std::uint16_t number = class_number(design.class_name);
    if (number == 0) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    Window* window = window_of(parent);
    Controls* controls = window != nullptr ? window->controls() : nullptr;
    if (controls == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    DialogItem item;
    item.style = design.style;
    item.id = design.id;
    item.window_class.number = number;
    item.text.text = QString::fromUtf8(design.text).toStdU16String();
    Control* control = add_control(*controls, item, area, parent);
    constexpr int kEdge = 2; // pixels of a frame above and below the text
    QWidget* widget = control->widget();
    widget->setFont(shrunk_to_height(widget->font(), area.height() - 2 * kEdge));
    return control->handle();
}

} // namespace platform

using namespace platform;

HWND GetDlgItem(HWND window, int id) {
    const Control* control = find_control(window, id);
    return control != nullptr ? control->handle() : nullptr;
}

int GetDlgCtrlID(HWND handle) {
    const Control* control = control_of(handle);
    return control != nullptr ? control->id() : 0;
}

BOOL SetDlgItemTextA(HWND window, int id, LPCSTR text) {
    Control* control = find_control(window, id);
    if (control == nullptr) {
        return FALSE;
    }
    control->set_text(QString::fromUtf8(text));
    return TRUE;
}

UINT GetDlgItemTextA(HWND window, int id, LPSTR buffer, int size) {
    return static_cast<UINT>(copy_text(text_of(find_control(window, id)), buffer, size));
}

int GetWindowTextA(HWND handle, LPSTR buffer, int size) {
    return static_cast<int>(copy_text(text_of(control_of(handle)), buffer, size));
}

BOOL CheckDlgButton(HWND window, int id, UINT check) {
    Control* control = find_control(window, id);
    if (control == nullptr) {
        return FALSE;
    }
    control->set_checked(check != BST_UNCHECKED);
    return TRUE;
}

UINT IsDlgButtonChecked(HWND window, int id) {
    const Control* control = find_control(window, id);
    return control != nullptr && control->checked() ? BST_CHECKED : BST_UNCHECKED;
}

HWND SetFocus(HWND handle) {
    const Window* focused = window_of_widget(QApplication::focusWidget());
    const HWND previous = focused != nullptr ? focused->handle() : nullptr;
    const Window* window = window_of(handle);
    if (window == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    window->widget()->setFocus(Qt::OtherFocusReason); // a frame gives it to its client area
    return previous;
}
