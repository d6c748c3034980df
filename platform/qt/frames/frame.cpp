#include "frames/frame.h"

#include "controls/child_controls.h"
#include "gdi/device_context.h"
#include "resources/resources.h"
#include "user/keys.h"
#include "user/message_loop.h"
#include "user/painting.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace platform {

namespace {

QSize& last_known_frame() {
    static QSize size(8, 27);
    return size;
}

QSize frame_size(const QWidget* widget) {
    if (!widget->isWindow()) {
        return {0, 0};
    }
    const QWindow* window = widget->isVisible() ? widget->windowHandle() : nullptr;
    return window != nullptr ? QSize(0, 0).grownBy(window->frameMargins()) : last_known_frame();
}

WPARAM button_flags(const QMouseEvent& event) {
    WPARAM flags = 0;
    flags |= event.buttons().testFlag(Qt::LeftButton) ? MK_LBUTTON : 0;
    flags |= event.buttons().testFlag(Qt::RightButton) ? MK_RBUTTON : 0;
    flags |= event.modifiers().testFlag(Qt::ShiftModifier) ? MK_SHIFT : 0;
    flags |= event.modifiers().testFlag(Qt::ControlModifier) ? MK_CONTROL : 0;
    return flags;
}

LPARAM place(const QMouseEvent& event) {
    const QPoint at = event.position().toPoint();
    return MAKELPARAM(static_cast<unsigned>(at.x()), static_cast<unsigned>(at.y()));
}

void add_menu_items(QMenu* menu, const std::vector<MenuItem>& items, HWND window) {
    for (const MenuItem& item : items) {
        if (item.separator) {
            menu->addSeparator();
        } else if (item.popup) {
            add_menu_items(menu->addMenu(to_qstring(item.text)), item.items, window);
        } else {
            // The shortcut after the tab is only text: a toolkit shortcut would consume the key
            // before the accelerator table sees it.
            QAction* action = menu->addAction(to_qstring(item.text));
            action->setEnabled(!item.grayed);
            QObject::connect(action, &QAction::triggered, menu, [window, id = item.id] {
                post_input(window, WM_COMMAND, MAKEWPARAM(id, 0), 0);
            });
        }
    }
}

std::vector<MenuItem> load_menu(std::uint16_t id) {
    if (id == 0) {
        return {};
    }
    auto menu = read_menu(program_resources().find(ResourceType::menu, id));
    if (!menu) {
        resource_fault("menu", id);
    }
    return std::move(*menu);
}

bool grayed_in(const std::vector<MenuItem>& items, std::uint16_t id) {
    return std::any_of(items.begin(), items.end(), [id](const MenuItem& item) {
        return item.popup ? grayed_in(item.items, id) : item.id == id && item.grayed;
    });
}

} // namespace

QSize usual_frame() {
    return last_known_frame();
}

ClientArea::ClientArea(Frame* frame) : QWidget(frame), frame_(frame), controls_(this) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus); // a click leaves the focus in its control
    setMouseTracking(true);
}

TopLevelWindow* ClientArea::owner() const {
    return frame_->owner();
}

void ClientArea::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (owner() != nullptr) {
        tell_selected(owner()->handle());
    }
}

void ClientArea::paintEvent(QPaintEvent* event) {
    if (owner() == nullptr) {
        return;
    }
    // A painted window has its frame by now. Queued, as the window must not be resized in here.
    if (!frame_->frame_known()) {
        QMetaObject::invokeMethod(frame_, &Frame::learn_frame, Qt::QueuedConnection);
    }
    QPainter painter(this);
    if (owner()->surface().image().isNull()) { // too large for an image: see resize_surface()
        painter.fillRect(event->rect(), Qt::white);
        return;
    }
    for (const QRect& part : event->region()) {
        painter.drawImage(part, owner()->surface().image(), part);
    }
    owner()->surface().text().draw(painter);
}

void ClientArea::post_button(const QMouseEvent& event, UINT left, UINT right) {
    const bool is_left = event.button() == Qt::LeftButton;
    if (owner() != nullptr && (is_left || event.button() == Qt::RightButton)) {
        post_input(owner()->handle(), is_left ? left : right, button_flags(event), place(event));
    }
}

void ClientArea::mousePressEvent(QMouseEvent* event) {
    post_button(*event, WM_LBUTTONDOWN, WM_RBUTTONDOWN);
}

void ClientArea::mouseDoubleClickEvent(QMouseEvent* event) {
    if (owner() != nullptr && (owner()->window_class().style & CS_DBLCLKS) != 0) {
        post_button(*event, WM_LBUTTONDBLCLK, WM_RBUTTONDBLCLK);
    } else {
        mousePressEvent(event);
    }
}

void ClientArea::mouseReleaseEvent(QMouseEvent* event) {
    post_button(*event, WM_LBUTTONUP, WM_RBUTTONUP);
}

void ClientArea::mouseMoveEvent(QMouseEvent* event) {
    if (owner() != nullptr) {
        post_mouse_move(owner()->handle(), button_flags(*event), place(*event));
    }
}

Frame::Frame(TopLevelWindow* window)
    : window_(window), menu_bar_(new QMenuBar(this)), client_(new ClientArea(this)) {
    menu_bar_->setNativeMenuBar(false);
    setFocusProxy(client_);
}

void Frame::arrange() {
    const int bar = menu_bar_->actions().isEmpty() ? 0 : menu_bar_->heightForWidth(width());
    menu_bar_->setGeometry(0, 0, width(), bar);
    client_->setGeometry(0, bar, width(), std::max(0, height() - bar));
    window_->client_resized();
}

void Frame::set_outer_size(QSize size) {
    outer_ = size;
    guessed_ = frame_size(this);
    resized_ = false;
    resize(outer_ - guessed_);
    arrange(); // a hidden widget gets no resize event before it is shown
}

void Frame::learn_frame() {
    if (window_ == nullptr || !isVisible() || std::exchange(frame_known_, true)) {
        return;
    }
    last_known_frame() = frame_size(this);
    if (last_known_frame() != guessed_ && !resized_) {
        set_outer_size(outer_);
    }
}

void Frame::orphan() {
    window_ = nullptr;
    hide();
    deleteLater();
}

void Frame::resizeEvent(QResizeEvent*) {
    // Stays set: late events of the window manager may still report the old size.
    resized_ = resized_ || size() != outer_ - guessed_;
    if (window_ != nullptr) {
        arrange();
    }
}

void Frame::closeEvent(QCloseEvent* event) {
    // The window procedure decides.
    event->ignore();
    if (window_ != nullptr) {
        post_input(window_->handle(), WM_CLOSE, 0, 0);
    }
}

// Activation gives the focus to the window itself, whichever control had it before.
void Frame::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        client_->setFocus(Qt::ActiveWindowFocusReason);
    }
    QWidget::changeEvent(event);
}

TopLevelWindow::TopLevelWindow(const WindowClass& window_class, const QString& title)
    : class_(window_class), menu_(load_menu(window_class.menu)), frame_(new Frame(this)) {
    extra().resize(class_.extra_bytes);
    frame_->setWindowTitle(title);
    if (class_.icon != nullptr) {
        frame_->setWindowIcon(*icon_of(class_.icon));
    }
    for (const MenuItem& popup : menu_) {
        add_menu_items(menu_bar()->addMenu(to_qstring(popup.text)), popup.items, handle());
    }
    frame_->client()->setFocus();
}

TopLevelWindow::~TopLevelWindow() {
    dismantle();
}

QWidget* TopLevelWindow::widget() const {
    return frame_;
}

QMenuBar* TopLevelWindow::menu_bar() const {
    return frame_->menu_bar();
}

Controls* TopLevelWindow::controls() {
    return frame_ != nullptr ? &frame_->client()->controls() : nullptr;
}

void TopLevelWindow::forget_children() {
    if (const Controls* all = controls()) {
        all->forget();
    }
}

void TopLevelWindow::open_menu() {
    if (frame_ != nullptr && !menu_bar()->actions().isEmpty()) {
        menu_bar()->setActiveAction(menu_bar()->actions().front());
    }
}

QSize TopLevelWindow::client_size() const {
    return frame_->client()->size();
}

void TopLevelWindow::show_surface(const QRegion& region) {
    if (frame_ != nullptr) { // null once destroyed; device contexts may still be open
        frame_->client()->update(region);
    }
}

LRESULT TopLevelWindow::receive(UINT message, WPARAM wparam, LPARAM lparam) {
    return class_.procedure(handle(), message, wparam, lparam);
}

void TopLevelWindow::dismantle() {
    if (frame_ != nullptr) {
        frame_->orphan();
        frame_ = nullptr;
    }
}

void TopLevelWindow::client_resized() {
    const QSize size = client_size();
    const QSize before = surface().image().size();
    if (size == before) {
        return;
    }
    resize_surface(size, class_.background);
    const bool redraw = ((class_.style & CS_HREDRAW) != 0 && size.width() != before.width()) ||
                        ((class_.style & CS_VREDRAW) != 0 && size.height() != before.height());
    if (redraw) {
        invalidate(QRect(QPoint(0, 0), size), true);
    }
    if (was_shown_) {
        erase_and_tell_size();
    }
}

void TopLevelWindow::shown() {
    if (!std::exchange(was_shown_, true)) {
        erase_and_tell_size();
    }
}

void TopLevelWindow::erase_and_tell_size() {
    const std::shared_ptr<Window> alive = shared_from_this();
    erase_now(*this);
    if (frame_ == nullptr) {
        return; // destroyed by its procedure
    }
    const QSize size = client_size();
    send_message(
        handle(), WM_SIZE, 0,
        MAKELPARAM(static_cast<unsigned>(size.width()), static_cast<unsigned>(size.height())));
}

bool menu_entry_grayed(const Window& window, std::uint16_t id) {
    const auto* top_level = dynamic_cast<const TopLevelWindow*>(&window);
    return top_level != nullptr && grayed_in(top_level->menu(), id);
}

} // namespace platform

using namespace platform;

HWND CreateWindowExA(DWORD, LPCSTR class_name, LPCSTR title, DWORD style, int x, int y, int width,
                     int height, HWND parent, HMENU menu, HINSTANCE, LPVOID parameter) {
    if ((style & WS_CHILD) != 0) {
        const auto id = static_cast<int>(reinterpret_cast<std::uintptr_t>(menu));
        return create_child({class_name, title, style, id}, QRect(x, y, width, height), parent);
    }
    const WindowClass* window_class = find_window_class(class_name);
    if (window_class == nullptr) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    const auto window = std::make_shared<TopLevelWindow>(*window_class, QString::fromUtf8(title));
    keep_window(window);
    auto* frame = static_cast<Frame*>(window->widget());
    frame->move(x, y);
    frame->set_outer_size(QSize(width, height));
    const HWND handle = window->handle();
    // WM_CREATE may refuse, by its answer or by destroying the window.
    if (send_message(handle, WM_CREATE, 0, reinterpret_cast<LPARAM>(parameter)) == -1) {
        DestroyWindow(handle);
    }
    return IsWindow(handle) ? handle : nullptr;
}

BOOL ShowWindow(HWND handle, int show) {
    Window* window = window_of(handle);
    if (window == nullptr) {
        return FALSE;
    }
    const std::shared_ptr<Window> alive = window->shared_from_this();
    QWidget* widget = window->widget();
    const bool was_visible = widget->isVisible();
    widget->setVisible(show != SW_HIDE);
    if (show != SW_HIDE) {
        auto* top_level = dynamic_cast<TopLevelWindow*>(window);
        if (!IsWindow(handle)) {
            return was_visible; // destroyed by its procedure
        }
        widget->raise();
        widget->activateWindow();
        if (top_level != nullptr) {
            top_level->shown();
        }
    }
    return was_visible;
}

BOOL MoveWindow(HWND handle, int x, int y, int width, int height, BOOL) {
    const Window* window = window_of(handle);
    if (window == nullptr) {
        return FALSE;
    }
    QWidget* widget = window->widget();
    widget->move(x, y);
    if (auto* frame = dynamic_cast<Frame*>(widget)) {
        frame->set_outer_size(QSize(width, height));
    } else {
        widget->resize(QSize(width, height) - frame_size(widget));
    }
    return TRUE;
}

BOOL GetWindowRect(HWND handle, RECT* rect) {
    QRect area;
    if (handle == desktop_handle()) {
        area = QGuiApplication::primaryScreen()->geometry();
    } else if (const Window* window = window_of(handle)) {
        const QWidget* widget = window->widget();
        area = QRect(widget->pos(), widget->size() + frame_size(widget));
    } else {
        return FALSE;
    }
    *rect = {area.left(), area.top(), area.left() + area.width(), area.top() + area.height()};
    return TRUE;
}

LRESULT DefWindowProcA(HWND handle, UINT message, WPARAM wparam, LPARAM) {
    auto* window = dynamic_cast<TopLevelWindow*>(window_of(handle));
    if (window == nullptr) {
        return 0;
    }
    switch (message) {
    case WM_CLOSE:
        DestroyWindow(handle);
        return 0;
    case WM_PAINT: {
        PAINTSTRUCT paint;
        BeginPaint(handle, &paint);
        EndPaint(handle, &paint);
        return 0;
    }
    case WM_ERASEBKGND: {
        DeviceContext* device = device_context(reinterpret_cast<HDC>(wparam));
        if (!window->window_class().has_background || device == nullptr ||
            device->surface == nullptr) {
            return 0;
        }
        fill(*device, device->surface->bounds(), window->window_class().background);
        return 1;
    }
    default:
        answer_key(*window, message, wparam);
        return 0;
    }
}
