#include "tests/support/user_loop.h"

#include "resources/resource.h"

#include <gtest/gtest.h>

namespace pelmora_test {

void run(user::Script& script) {
    script.start();
    HACCEL accelerators = LoadAcceleratorsA(nullptr, MAKEINTRESOURCEA(IDR_ACCELERATORS));
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0)) {
        if (TranslateAcceleratorA(message.hwnd, accelerators, &message) == 0) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
}

void end_script(const std::string& failure) {
    EXPECT_EQ(failure, "");
    PostQuitMessage(0);
}

void settle() {
    user::Script script(end_script);
    script.then("nothing", [] {});
    run(script);
}

} // namespace pelmora_test
