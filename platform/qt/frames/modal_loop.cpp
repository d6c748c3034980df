#include "frames/modal_loop.h"

#include "platform/win32.h"

namespace platform {

void run_modal_loop(const std::function<bool()>& running) {
    while (running()) {
        MSG message;
        if (!GetMessageA(&message, nullptr, 0, 0)) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

} // namespace platform
