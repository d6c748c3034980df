#include "frames/accessible.h"

#include "frames/frame.h"

#include <QAccessible>
#include <QMenu>

namespace platform {

namespace {

// The toolkit calls it with each class of the object's, from its own to QObject, until one is
// known.
QAccessibleInterface* make_accessible(const QString& class_name, QObject* object) {
    if (auto* client = dynamic_cast<ClientArea*>(object)) {
        return client->owner() != nullptr ? accessible_content(client) : nullptr;
    }
    if (class_name == QLatin1String("QMenu")) {
        return accessible_menu(static_cast<QMenu*>(object));
    }
    return nullptr;
}

// The client area of a window that has described its content, while somebody listens.
QWidget* described(HWND window) {
    auto* top_level = dynamic_cast<TopLevelWindow*>(window_of(window));
    const bool told = QAccessible::isActive() && top_level != nullptr &&
                      top_level->widget() != nullptr && !top_level->content.expired();
    return told ? static_cast<Frame*>(top_level->widget())->client() : nullptr;
}

// `cell` is an index, or -1 for the content as a whole.
void tell(QWidget* client, QAccessible::Event what, int cell) {
    QAccessibleEvent event(client, what);
    event.setChild(cell);
    QAccessible::updateAccessibility(&event);
}

} // namespace

void install_accessibility() {
    QAccessible::installFactory(make_accessible);
}

void describe(HWND window, const std::shared_ptr<AccessibleContent>& content) {
    if (Window* described_window = window_of(window)) {
        described_window->content = content;
    }
}

void tell_focused(const Window& window) {
    const std::shared_ptr<AccessibleContent> content = window.content.lock();
    if (content != nullptr && content->selected() >= 0) {
        tell_selected(window.handle(), content->selected());
    }
}

void tell_selected(HWND window, int cell) {
    if (QWidget* client = described(window)) {
        tell(client, QAccessible::SelectionWithin, -1);
        tell(client, QAccessible::Focus, cell);
        if (cell >= 0) {
            tell(client, QAccessible::Selection, cell);
        }
    }
}

void tell_cell_changed(HWND window, int cell) {
    if (QWidget* client = described(window)) {
        tell(client, QAccessible::DescriptionChanged, cell);
    }
}

void tell_content_changed(HWND window) {
    QWidget* client = described(window);
    if (client == nullptr) {
        return;
    }
    QAccessibleTableModelChangeEvent change(client, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&change);
    tell(client, QAccessible::NameChanged, -1);
    const std::shared_ptr<AccessibleContent> content = window_of(window)->content.lock();
    if (client->hasFocus()) { // what is shown now is read
        tell(client, QAccessible::Focus, content->selected());
    }
}

} // namespace platform
