// What assistive technology is told of windows and menus, beyond what the toolkit tells of its own
// widgets.
#pragma once

#include <QAccessibleInterface>

class QMenu;

namespace platform {

class ClientArea;

// Makes the toolkit ask here for client areas and menus. Called once, at the start.
void install_accessibility();

// The descriptions; the toolkit owns them.
QAccessibleInterface* accessible_content(ClientArea* client);
QAccessibleInterface* accessible_menu(QMenu* menu);

} // namespace platform
