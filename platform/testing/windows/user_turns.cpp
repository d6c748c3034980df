// When the user on Windows has a turn.
#include "platform/testing/user_turns.h"

#include "platform/testing/windows/user_parts.h"

#include <deque>
#include <map>
#include <utility>

namespace user {

namespace {

std::deque<std::function<void()>>& actions() {
    static std::deque<std::function<void()>> waiting;
    return waiting;
}

std::map<UINT_PTR, std::function<void()>>& timers() {
    static std::map<UINT_PTR, std::function<void()>> all;
    return all;
}

} // namespace

void soon(std::function<void()> action) {
    actions().push_back(std::move(action));
}

bool act_soon() {
    if (actions().empty()) {
        return false;
    }
    const auto action = std::move(actions().front());
    actions().pop_front();
    action();
    return true;
}

const void* innermost_dialog() {
    return newest_dialog();
}

struct Turns::Timer {
    UINT_PTR id;
};

// The system has timers elapse only when nothing else is waiting, painting included.
Turns::Turns(std::function<void()> turn) {
    constexpr UINT kPause = 10; // milliseconds; the shortest there is
    const UINT_PTR id = SetTimer(nullptr, 0, kPause, [](HWND, UINT, UINT_PTR elapsed, DWORD) {
        const auto found = timers().find(elapsed);
        if (found != timers().end()) {
            const auto call = found->second; // may be gone before it returns
            call();
        }
    });
    timers()[id] = std::move(turn);
    timer_ = std::make_unique<Timer>(Timer{id});
}

Turns::~Turns() {
    KillTimer(nullptr, timer_->id);
    timers().erase(timer_->id);
}

} // namespace user
