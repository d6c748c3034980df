// What the user does, step by step.
#include "platform/windows/user_parts.h"

#include <deque>
#include <map>
#include <memory>
#include <tuple>
#include <utility>

namespace user {

namespace {

constexpr ULONGLONG kPatience = 60'000; // milliseconds, for machines under load

std::deque<std::function<void()>>& actions() {
    static std::deque<std::function<void()>> waiting;
    return waiting;
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

struct Script::State : std::enable_shared_from_this<Script::State> {
    struct Step {
        std::string name;
        std::function<void()> action;    // or else:
        std::function<bool()> condition; // true: go on with the next step
    };
    std::function<void(const std::string&)> done;
    std::deque<Step> steps;
    UINT_PTR timer = 0;
    ULONGLONG waiting_since = 0;
    bool busy = false; // with a step, in a dialog or beside all:
    HWND dialog = nullptr;

    static std::map<UINT_PTR, State*>& running() {
        static std::map<UINT_PTR, State*> all;
        return all;
    }

    // The system has timers elapse only when nothing else is waiting, painting included, and in
    // whatever loop there is.
    void start() {
        constexpr UINT kPause = 10; // the shortest there is
        waiting_since = GetTickCount64();
        timer = SetTimer(nullptr, 0, kPause, [](HWND, UINT, UINT_PTR id, DWORD) {
            const auto found = running().find(id);
            if (found != running().end()) {
                // Lives on until its step is over, whoever ends the script meanwhile.
                const std::shared_ptr<State> state = found->second->shared_from_this();
                state->tick();
            }
        });
        running()[timer] = this;
    }

    void stop() {
        if (timer != 0) {
            KillTimer(nullptr, timer);
            running().erase(timer);
            timer = 0;
        }
    }

    void tick() {
        // A step may handle messages of its own, but goes on only in the loop of a dialog that it
        // opened, to answer that.
        if ((busy && newest_dialog() == dialog) || act_soon()) {
            return;
        }
        if (steps.empty()) {
            stop();
            done("");
        } else if (steps.front().action) {
            act();
        } else {
            ask();
        }
    }

    void act() {
        const Step step = std::move(steps.front());
        steps.pop_front();
        waiting_since = GetTickCount64();
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
        if (timer == 0) {
            return;
        }
        if (over) {
            waiting_since = GetTickCount64();
        } else if (GetTickCount64() - waiting_since > kPatience) {
            stop();
            done("waited in vain for: " + step.name);
        } else {
            steps.push_front(step);
        }
    }

    template <class Work>
    bool during(const Work& work) {
        const auto before = std::pair(busy, dialog);
        busy = true;
        dialog = newest_dialog();
        const bool result = work();
        std::tie(busy, dialog) = before;
        return result;
    }
};

Script::Script(std::function<void(const std::string&)> done) : state_(std::make_shared<State>()) {
    state_->done = std::move(done);
}

Script::~Script() {
    state_->stop();
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
