// Window classes.
#include "resources/resources.h"
#include "user/window.h"

#include <map>

namespace platform {

namespace {

// Never destroyed: windows refer to their classes until the process ends.
std::map<std::string, WindowClass>& classes() {
    static auto& known = *new std::map<std::string, WindowClass>;
    return known;
}

} // namespace

const WindowClass* find_window_class(const std::string& name) {
    const auto found = classes().find(name);
    return found != classes().end() ? &found->second : nullptr;
}

} // namespace platform

using namespace platform;

ATOM RegisterClassExA(const WNDCLASSEXA* given) {
    if (find_window_class(given->lpszClassName) != nullptr) {
        SetLastError(ERROR_CLASS_ALREADY_EXISTS);
        return 0;
    }
    const WindowClass made{
        .name = given->lpszClassName,
        .style = given->style,
        .procedure = given->lpfnWndProc,
        .extra_bytes = static_cast<std::size_t>(given->cbWndExtra),
        .menu = resource_id(given->lpszMenuName),
        .has_background = given->hbrBackground != nullptr,
        .background = brush_pixel(given->hbrBackground),
        .icon = given->hIcon,
    };
    classes().emplace(made.name, made);
    return static_cast<ATOM>(0xC000 + classes().size());
}

BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX*) {
    return TRUE;
}
