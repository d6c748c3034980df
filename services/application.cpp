#include "services/application.h"

namespace pelmora {
namespace {

HINSTANCE app_instance;
HWND main_window;

} // namespace

HINSTANCE AppInstance() {
    return app_instance;
}

void SetAppInstance(HINSTANCE instance) {
    app_instance = instance;
}

HWND MainWindow() {
    return main_window;
}

void SetMainWindow(HWND window) {
    main_window = window;
}

} // namespace pelmora
