// The content that a window draws itself, as the toolkit's accessibility sees it.
#include "frames/accessible.h"
#include "frames/frame.h"
#include "platform/accessible_cells.h"
#include "user/message_loop.h"

#include <QAccessibleWidget>
#include <QPointer>

#include <algorithm>
#include <map>
#include <utility>

namespace platform {

namespace {

QRect on_screen(const QWidget& client, const RECT& area) {
    const QRect place(area.left, area.top, area.right - area.left, area.bottom - area.top);
    return place.translated(client.mapToGlobal(QPoint(0, 0)));
}

// --- A cell --------------------------------------------------------------------------------------

class CellAccessible final : public QAccessibleInterface,
                             public QAccessibleActionInterface,
                             public QAccessibleTableCellInterface {
  public:
    CellAccessible(ClientArea* client, int index) : client_(client), index_(index) {}

    bool isValid() const override {
        const std::shared_ptr<AccessibleContent> all = content();
        return all != nullptr && index_ < all->cells();
    }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override {
        return client_ != nullptr ? client_->window()->windowHandle() : nullptr;
    }
    QAccessible::Role role() const override {
        return in_table() ? QAccessible::Cell : QAccessible::Notification;
    }
    QAccessible::State state() const override;
    QString text(QAccessible::Text which) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override { return isValid() ? on_screen(*client_, cell().area) : QRect(); }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(client_.data());
    }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (in_table() && type == QAccessible::ActionInterface) {
            return static_cast<QAccessibleActionInterface*>(this);
        }
        return in_table() && type == QAccessible::TableCellInterface
                   ? static_cast<QAccessibleTableCellInterface*>(this)
                   : nullptr;
    }

    // Actions
    QStringList actionNames() const override {
        return {QStringLiteral("Select"), toggleAction(), QStringLiteral("Show alone")};
    }
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString& name) const override;

    // The table
    bool isSelected() const override { return isValid() && cell().selected; }
    QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return isValid() ? index_ % content()->columns() : -1; }
    int rowIndex() const override { return isValid() ? index_ / content()->columns() : -1; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    int index() const { return index_; }
    QAccessibleInterface* table() const override { return parent(); }

  private:
    std::shared_ptr<AccessibleContent> content() const {
        const bool open = client_ != nullptr && client_->owner() != nullptr;
        return open ? client_->owner()->content.lock() : nullptr;
    }
    AccessibleCell cell() const { return content()->cell(index_); }
    bool in_table() const { return isValid() && content()->role() == AccessibleRole::table; }

    QPointer<ClientArea> client_;
    int index_;
};

QAccessible::State CellAccessible::state() const {
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const AccessibleCell now = cell();
    state.selectable = in_table();
    state.focusable = in_table();
    state.selected = now.selected;
    state.focused = now.selected && client_->hasFocus();
    state.offscreen =
        !on_screen(*client_, now.area)
             .intersects(on_screen(*client_, {0, 0, client_->width(), client_->height()}));
    return state;
}

QString CellAccessible::text(QAccessible::Text which) const {
    if (!isValid()) {
        return {};
    }
    switch (which) {
    case QAccessible::Name:
        return QString::fromStdString(cell().name);
    case QAccessible::Description:
        return QString::fromStdString(cell().description);
    default:
        return {};
    }
}

void CellAccessible::doAction(const QString& name) {
    const auto index = actionNames().indexOf(name);
    if (isValid() && index >= 0) {
        // In the order of AccessibleAction.
        post_input(client_->owner()->handle(), kAccessibleAction, static_cast<WPARAM>(index),
                   index_);
    }
}

QStringList CellAccessible::keyBindingsForAction(const QString& name) const {
    const QStringList keys{QString(), QStringLiteral("Space"), QStringLiteral("Return")};
    const auto index = actionNames().indexOf(name);
    return index >= 0 && !keys[index].isEmpty() ? QStringList(keys[index]) : QStringList();
}

// --- The content ---------------------------------------------------------------------------------

// A table's cells come before the client area's own controls; no window has both.
class ContentAccessible final : public QAccessibleWidget, public QAccessibleTableInterface {
  public:
    explicit ContentAccessible(ClientArea* client) : QAccessibleWidget(client), client_(client) {}
    ~ContentAccessible() override {
        forget_cells();
        forget_cells();
    }

    QAccessible::Role role() const override;
    QString text(QAccessible::Text which) const override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableInterface && role() == QAccessible::Table
                   ? static_cast<QAccessibleTableInterface*>(this)
                   : QAccessibleWidget::interface_cast(type);
    }

    // The table. Its rows and columns cannot be selected, and have no headings.
    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override {
        const bool there = row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
        return there ? child(row * columnCount() + column) : nullptr;
    }
    int selectedCellCount() const override { return selected() >= 0 ? 1 : 0; }
    QList<QAccessibleInterface*> selectedCells() const override {
        return selected() >= 0 ? QList{child(selected())} : QList<QAccessibleInterface*>();
    }
    QString columnDescription(int) const override { return {}; }
    QString rowDescription(int) const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    int columnCount() const override { return content() != nullptr ? content()->columns() : 0; }
    int rowCount() const override {
        const int columns = std::max(columnCount(), 1);
        return (cells() + columns - 1) / columns;
    }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override { forget_cells(); }

  private:
    std::shared_ptr<AccessibleContent> content() const {
        return client_->owner() != nullptr ? client_->owner()->content.lock() : nullptr;
    }
    int cells() const { return content() != nullptr ? content()->cells() : 0; }
    int selected() const { return content() != nullptr ? content()->selected() : -1; }
    void forget_cells();

    ClientArea* client_;                           // whose deletion deletes this
    mutable std::map<int, QAccessible::Id> known_; // the cells that were asked for, by index
    // Those of the content before. The toolkit gives the id of a deleted object to the next one,
    // which listeners would take for the same.
    std::map<int, QAccessible::Id> old_;
};

QAccessible::Role ContentAccessible::role() const {
    const std::shared_ptr<AccessibleContent> all = content();
    if (all == nullptr) {
        return QAccessible::Client;
    }
    switch (all->role()) {
    case AccessibleRole::table:
        return QAccessible::Table;
    case AccessibleRole::status:
        return QAccessible::StatusBar;
    case AccessibleRole::picture:
        break;
    }
    return QAccessible::Graphic;
}

QString ContentAccessible::text(QAccessible::Text which) const {
    const std::shared_ptr<AccessibleContent> all = content();
    if (all != nullptr && which == QAccessible::Name) {
        return QString::fromStdString(all->name());
    }
    return QAccessibleWidget::text(which);
}

int ContentAccessible::childCount() const {
    return cells() > 0 ? cells() : QAccessibleWidget::childCount();
}

QAccessibleInterface* ContentAccessible::child(int index) const {
    if (cells() == 0) {
        return QAccessibleWidget::child(index);
    }
    if (index < 0 || index >= cells()) {
        return nullptr;
    }
    const auto known = known_.find(index);
    if (known != known_.end()) {
        return QAccessible::accessibleInterface(known->second);
    }
    auto* made = new CellAccessible(client_, index); // owned by the toolkit's registry
    known_[index] = QAccessible::registerAccessibleInterface(made);
    return made;
}

int ContentAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* cell = dynamic_cast<const CellAccessible*>(child);
    return cell != nullptr && cell->index() < cells() ? cell->index()
                                                      : QAccessibleWidget::indexOfChild(child);
}

QAccessibleInterface* ContentAccessible::childAt(int x, int y) const {
    if (cells() == 0) {
        return QAccessibleWidget::childAt(x, y);
    }
    const QPoint point = client_->mapFromGlobal(QPoint(x, y));
    const bool inside = client_->rect().contains(point);
    return child(inside ? cell_at(*content(), {point.x(), point.y()}) : -1);
}

QAccessibleInterface* ContentAccessible::focusChild() const {
    return selected() >= 0 ? child(selected()) : QAccessibleWidget::focusChild();
}

void ContentAccessible::forget_cells() {
    for (const auto& [index, id] : old_) {
        QAccessible::deleteAccessibleInterface(id);
    }
    old_ = std::exchange(known_, {});
}

} // namespace

QAccessibleInterface* accessible_content(ClientArea* client) {
    return new ContentAccessible(client);
}

} // namespace platform
