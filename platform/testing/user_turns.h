// What the user's scripts need of each platform.
#pragma once

#include <functional>
#include <memory>

namespace user {

// While one lives it calls `turn` again and again, in whatever message loop there is, each time
// that nothing else waits to be handled or painted; also while an earlier call has not returned. A
// turn may end it.
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

// Tells the modal dialogs apart: the innermost that is open, null for none.
const void* innermost_dialog();

// Does the next of the user's actions that wait for their turn; false when there is none.
bool act_soon();

} // namespace user
