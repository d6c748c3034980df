// What the user does, step by step, on every platform.
#include "platform/testing/user.h"
#include "platform/testing/user_turns.h"

#include <chrono>
#include <deque>
#include <tuple>
#include <utility>

namespace user {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kPatience{60}; // for machines under load or with sanitizers

} // namespace

struct Script::State : std::enable_shared_from_this<Script::State> {
    struct Step {
        std::string name;
        std::function<void()> action;    // or else:
        std::function<bool()> condition; // true: go on with the next step
    };
    std::function<void(const std::string&)> done;
    std::deque<Step> steps;
    std::unique_ptr<Turns> turns; // while it runs
    Clock::time_point waiting_since;
    bool busy = false; // with a step, in a dialog or beside all:
    const void* dialog = nullptr;

    void start() {
        waiting_since = Clock::now();
        turns = std::make_unique<Turns>([script = weak_from_this()] {
            // Lives on until its step is over, whoever ends the script meanwhile.
            if (const std::shared_ptr<State> alive = script.lock()) {
                alive->turn();
            }
        });
    }

    void end(const std::string& failure) {
        turns.reset();
        done(failure);
    }

    void turn() {
        // A step may handle messages of its own, but goes on only in the loop of a dialog that it
        // opened, to answer that.
        if ((busy && innermost_dialog() == dialog) || act_soon()) {
            return;
        }
        if (steps.empty()) {
            end("");
        } else if (steps.front().action) {
            act();
        } else {
            ask();
        }
    }

    void act() {
        const Step step = std::move(steps.front());
        steps.pop_front();
        waiting_since = Clock::now();
        during([&step] {
            step.action();
            return true;
        });
    }

    void ask() {
        // Asked again only when it has answered.
        const Step step = std::move(steps.front());
        steps.pop_front();
        const bool over = during(step.condition);
        if (turns == nullptr) {
            return;
        }
        if (over) {
            waiting_since = Clock::now();
        } else if (Clock::now() - waiting_since > kPatience) {
            end("waited in vain for: " + step.name);
        } else {
            steps.push_front(step);
        }
    }

    template <class Work>
    bool during(const Work& work) {
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
    state_->turns.reset();
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
