// Scripts of the simulated user, on every platform.
#include "platform/testing/user.h"
#include "platform/testing/user_platform.h"

#include <chrono>
#include <deque>
#include <tuple>
#include <utility>

namespace user {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kTimeout{60}; // long, for loaded machines and sanitizers

} // namespace

struct Script::State : std::enable_shared_from_this<Script::State> {
    struct Step {
        std::string name;
        std::function<void()> action;    // null: a condition
        std::function<bool()> condition; // null: an action; true: go on with the next step
    };
    std::function<void(const std::string&)> done;
    std::deque<Step> steps;
    std::unique_ptr<IdleTimer> timer; // null: not running
    Clock::time_point waiting_since;
    bool busy = false;            // in a step
    const void* dialog = nullptr; // innermost when that step began; null for none

    void start() {
        waiting_since = Clock::now();
        timer = std::make_unique<IdleTimer>([script = weak_from_this()] {
            // Keeps the state alive until the step returns, as the step may destroy the script.
            if (const std::shared_ptr<State> alive = script.lock()) {
                alive->run_next();
            }
        });
    }

    void end(const std::string& failure) {
        timer.reset();
        done(failure);
    }

    void run_next() {
        // A step may run a message loop itself. The next step runs inside it only when the step has
        // opened a dialog, which the script then has to answer.
        if ((busy && innermost_dialog() == dialog) || run_queued_action()) {
            return;
        }
        if (steps.empty()) {
            end("");
        } else if (steps.front().action) {
            run_action();
        } else {
            check_condition();
        }
    }

    void run_action() {
        const Step step = std::move(steps.front());
        steps.pop_front();
        waiting_since = Clock::now();
        run_step([&step] {
            step.action();
            return true;
        });
    }

    void check_condition() {
        // Taken off the queue during the call, so that the call cannot be nested.
        const Step step = std::move(steps.front());
        steps.pop_front();
        const bool over = run_step(step.condition);
        if (timer == nullptr) {
            return;
        }
        if (over) {
            waiting_since = Clock::now();
        } else if (Clock::now() - waiting_since > kTimeout) {
            end("waited in vain for: " + step.name);
        } else {
            steps.push_front(step);
        }
    }

    template <class Work>
    bool run_step(const Work& work) {
        const auto before = std::pair(busy, dialog);
        busy = true;
        dialog = innermost_dialog();
        const bool result = work();
        std::tie(busy, dialog) = before;
        return result;
    }
};

Script::Script(std::function<void(const std::string&)> done) : state_(std::make_shared<State>()) {
    state_->done = std::move(done);
}

Script::~Script() {
    state_->timer.reset();
}

Script& Script::then(const std::string& name, std::function<void()> action) {
    state_->steps.push_back({name, std::move(action), nullptr});
    return *this;
}

Script& Script::await(const std::string& name, std::function<bool()> condition) {
    state_->steps.push_back({name, nullptr, std::move(condition)});
    return *this;
}

void Script::start() {
    state_->start();
}

} // namespace user
