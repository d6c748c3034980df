// Menus, named without the shortcut that their entries show after the tab. The toolkit's own
// description has it in the name, as it knows shortcuts of its own only.
#include "frames/accessible.h"

#include <QAccessibleWidget>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

#include <map>

namespace platform {

namespace {

// Without the tab and what follows it, and without the mark of the mnemonic.
QString name_of(const QAction& action) {
    return action.text().section(QLatin1Char('\t'), 0, 0).remove(QLatin1Char('&'));
}

// "Ctrl+E" for an entry that shows "Ctl+E".
QString shortcut_of(const QAction& action) {
    return action.text()
        .section(QLatin1Char('\t'), 1)
        .replace(QLatin1String("Ctl+"), QLatin1String("Ctrl+"));
}

class EntryAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    EntryAccessible(QMenu* menu, QAction* action) : menu_(menu), action_(action) {}

    bool isValid() const override { return menu_ != nullptr && action_ != nullptr; }
    QObject* object() const override { return action_.data(); }
    QWindow* window() const override {
        return menu_ != nullptr ? menu_->window()->windowHandle() : nullptr;
    }
    QAccessible::Role role() const override {
        return isValid() && action_->isSeparator() ? QAccessible::Separator : QAccessible::MenuItem;
    }
    QAccessible::State state() const override;
    QString text(QAccessible::Text which) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        return isValid()
                   ? menu_->actionGeometry(action_).translated(menu_->mapToGlobal(QPoint(0, 0)))
                   : QRect();
    }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(menu_.data());
    }
    int childCount() const override { return 0; } // no menu of the program's has another in it
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override {
        const bool usable = isValid() && !action_->isSeparator() && action_->isEnabled();
        return usable ? QStringList(pressAction()) : QStringList();
    }
    void doAction(const QString& name) override {
        if (actionNames().contains(name)) {
            action_->trigger();
        }
    }
    QStringList keyBindingsForAction(const QString& name) const override {
        const QString key = isValid() ? shortcut_of(*action_) : QString();
        // The mnemonic, the way to the entry, and the shortcut: readers tell them apart by place.
        return name == pressAction() && !key.isEmpty() ? QStringList{QString(), QString(), key}
                                                       : QStringList();
    }

  private:
    QPointer<QMenu> menu_;
    QPointer<QAction> action_;
};

QAccessible::State EntryAccessible::state() const {
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    state.invisible = !menu_->isVisible() || !action_->isVisible();
    state.disabled = !action_->isEnabled();
    state.focusable = !action_->isSeparator();
    state.focused = menu_->activeAction() == action_;
    state.selected = state.focused;
    return state;
}

QString EntryAccessible::text(QAccessible::Text which) const {
    if (!isValid()) {
        return {};
    }
    switch (which) {
    case QAccessible::Name:
        return name_of(*action_);
    case QAccessible::Accelerator:
        return shortcut_of(*action_);
    default:
        return {};
    }
}

class MenuAccessible final : public QAccessibleWidget {
  public:
    explicit MenuAccessible(QMenu* menu)
        : QAccessibleWidget(menu, QAccessible::PopupMenu), menu_(menu) {}
    ~MenuAccessible() override {
        for (const auto& [action, id] : known_) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }

    QString text(QAccessible::Text which) const override {
        return which == QAccessible::Name ? name_of(*menu_->menuAction())
                                          : QAccessibleWidget::text(which);
    }
    // The entry that opens it, which the toolkit describes.
    QAccessibleInterface* parent() const override {
        auto* bar = qobject_cast<QMenuBar*>(menu_->parentWidget());
        QAccessibleInterface* above = QAccessible::queryAccessibleInterface(bar);
        return above != nullptr
                   ? above->child(static_cast<int>(bar->actions().indexOf(menu_->menuAction())))
                   : QAccessibleWidget::parent();
    }
    int childCount() const override { return static_cast<int>(menu_->actions().size()); }
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override {
        return static_cast<int>(menu_->actions().indexOf(qobject_cast<QAction*>(child->object())));
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        QAction* action = menu_->actionAt(menu_->mapFromGlobal(QPoint(x, y)));
        return child(static_cast<int>(menu_->actions().indexOf(action)));
    }
    QAccessibleInterface* focusChild() const override {
        return child(static_cast<int>(menu_->actions().indexOf(menu_->activeAction())));
    }

  private:
    QMenu* menu_; // whose deletion deletes this
    mutable std::map<QAction*, QAccessible::Id> known_;
};

QAccessibleInterface* MenuAccessible::child(int index) const {
    const QList<QAction*> actions = menu_->actions();
    if (index < 0 || index >= actions.size()) {
        return nullptr;
    }
    const auto known = known_.find(actions[index]);
    if (known != known_.end()) {
        return QAccessible::accessibleInterface(known->second);
    }
    auto* made = new EntryAccessible(menu_, actions[index]); // owned by the toolkit's registry
    known_[actions[index]] = QAccessible::registerAccessibleInterface(made);
    return made;
}

} // namespace

QAccessibleInterface* accessible_menu(QMenu* menu) {
    return new MenuAccessible(menu);
}

} // namespace platform
