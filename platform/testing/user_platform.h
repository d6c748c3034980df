// What the simulated user's scripts need from each platform.
#pragma once

#include <functional>
#include <memory>

namespace user {

// While it lives it calls `callback` repeatedly, from whatever message loop is running,
// whenever no message and no painting is pending; also while an earlier call has not returned.
// `callback` may destroy it.
class IdleTimer {
  public:
    explicit IdleTimer(std::function<void()> callback);
    ~IdleTimer();
    IdleTimer(const IdleTimer&) = delete;
    IdleTimer& operator=(const IdleTimer&) = delete;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

// Identifies the innermost open modal dialog; null when there is none.
const void* innermost_dialog();

// Runs the oldest queued user action; false when the queue is empty.
bool run_queued_action();

} // namespace user
