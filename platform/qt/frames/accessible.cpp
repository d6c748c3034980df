#include "frames/accessible.h"

#include "frames/frame.h"

#include <QAccessibleWidget>
#include <QMenu>

namespace platform {

namespace {

// The toolkit calls it with each class of the object's, from its own to QObject, until one is
// known.
QAccessibleInterface* make_accessible(const QString& class_name, QObject* object) {
    if (auto* client = dynamic_cast<ClientArea*>(object)) {
        return client->owner() != nullptr ? accessible_content(client) : nullptr;
    }
    if (auto* frame = dynamic_cast<Frame*>(object)) {
        return new QAccessibleWidget(frame, QAccessible::Window);
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

// Makes the toolkit describe all cells anew. Listeners keep what they were told of an object, and
// read nothing out for one that has the focus already; a new one is read.
void renew_cells(QWidget* client) {
    QAccessibleTableModelChangeEvent change(client, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&change);
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

void tell_selected(HWND window) {
    QWidget* client = described(window);
    const int cell = client != nullptr ? window_of(window)->content.lock()->selected() : -1;
    if (client == nullptr) {
        return;
    }
    if (cell >= 0) {
        tell(client, QAccessible::Selection, cell);
    }
    if (client->hasFocus()) {
        tell(client, QAccessible::Focus, cell);
    }
}

void tell_cell_changed(HWND window, int cell) {
    QWidget* client = described(window);
    if (client == nullptr) {
        return;
    }
    if (cell == window_of(window)->content.lock()->selected()) {
        renew_cells(client);
        tell_selected(window);
    } else {
        tell(client, QAccessible::DescriptionChanged, cell);
    }
}

void tell_content_changed(HWND window) {
    QWidget* client = described(window);
    if (client == nullptr) {
        return;
    }
    renew_cells(client);
    tell(client, QAccessible::NameChanged, -1);
    if (window_of(window)->content.lock()->role() == AccessibleRole::status) {
        tell(client, QAccessible::ObjectShow, 0);
    } else {
        tell_selected(window);
    }
}

} // namespace platform
