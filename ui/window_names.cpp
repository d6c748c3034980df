#include "ui/window_names.h"

#include "resources/resource.h"

namespace pelmora {
namespace {

WindowNames names;

} // namespace

void LoadWindowNames(HINSTANCE instance) {
    const auto load = [instance](UINT id, WindowName& name) {
        LoadStringA(instance, id, name, sizeof name);
    };
    load(IDS_MAIN_TITLE, names.main_title);
    load(IDS_MAIN_CLASS, names.main_class);
    load(IDS_LOGO_TITLE, names.logo_title);
    load(IDS_LOGO_CLASS, names.logo_class);
    load(IDS_ENGINE_TITLE, names.engine_title);
    load(IDS_ENGINE_CLASS, names.engine_class);
}

const WindowNames& window_names() {
    return names;
}

} // namespace pelmora
