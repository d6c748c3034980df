// What the simulated user's scripts need from each platform.
#pragma once

#include <functional>
#include <memory>

namespace user {

// An idle timer. While it lives it calls `turn` repeatedly, from whatever message loop is running,
// whenever no message and no painting is pending; also while an earlier call has not returned.
// `turn` may destroy it.
class Turns {
  public:
    explicit Turns(std::function<void()> turn);
    ~Turns();
    Turns(const Turns&) = delete;
    Turns& operator=(const Turns&) = delete;

  private:
    struct Timer;
    std::unique_ptr<Timer> timer_;
};

// Identifies the innermost open modal dialog; null when there is none.
const void* innermost_dialog();

// Runs the oldest queued user action; false when the queue is empty.
bool run_queued_action();

} // namespace user
