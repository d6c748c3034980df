// Idle timers and the action queue on Windows.
#include "platform/testing/user_platform.h"

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

void queue_action(std::function<void()> action) {
    actions().push_back(std::move(action));
}

bool run_queued_action() {
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

struct IdleTimer::State {
    UINT_PTR id;
};

// WM_TIMER has the lowest priority: it is sent only when no message and no painting is pending.
IdleTimer::IdleTimer(std::function<void()> callback) {
    constexpr UINT kPause = 10; // milliseconds; the system's minimum
    const UINT_PTR id = SetTimer(nullptr, 0, kPause, [](HWND, UINT, UINT_PTR elapsed, DWORD) {
        const auto found = timers().find(elapsed);
        if (found != timers().end()) {
            const auto call = found->second; // a copy: the call may erase the timer
            call();
        }
    });
    timers()[id] = std::move(callback);
    state_ = std::make_unique<State>(State{id});
}

IdleTimer::~IdleTimer() {
    KillTimer(nullptr, state_->id);
    timers().erase(state_->id);
}

} // namespace user
