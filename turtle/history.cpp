#include "turtle/history.h"

#include <algorithm>
#include <cstdio>
#include <new>

namespace pelmora {
namespace {

// The key of a pass of `repeat`, whose address is even, that begins with `pen`.
std::uintptr_t key(const ExprNode& repeat, PenState pen) {
    return reinterpret_cast<std::uintptr_t>(&repeat) | pen;
}

} // namespace

History::History(const ExprNode* root, PenState pen, std::int64_t steps)
    : root_(root), limit_(steps), now_{0, 0, 0, 0, pen} {
    if (root != nullptr) {
        open_.push({root, &root_, &root_ + 1, 0, {}}); // the root is its only child
    }
}

// Walks to the end of the run, or until the history is full.
std::span<const OpCode> History::next() {
    first_ = now_.steps;
    terminals_.shrink(0);
    passes_.clear();
    while (!open_.empty()) {
        Open& top = open_.top();
        if (top.next == nullptr) {
            if (!begin_pass(top)) {
                break;
            }
        } else if (top.next == top.end) {
            end_pass(top);
        } else if (const ExprNode* node = *top.next; node != nullptr && node->kind == TERMINAL) {
            if (!terminal(node->op)) {
                break;
            }
            ++top.next;
        } else {
            ++top.next;
            child(node);
        }
    }
    return {terminals_.at(0), terminals_.size()};
}

// False at the step limit, or when the history is full.
bool History::terminal(OpCode op) {
    if (now_.steps == limit_) {
        cut_ = true;
        open_.shrink(0);
        return false;
    }
    if (now_.steps - first_ == kMaxTerminals) {
        return false;
    }
    ++now_.steps;
    terminals_.push(op);
    now_.pen = op == PEN_UP ? 1 : op == PEN_DOWN ? 0 : now_.pen;
    return true;
}

// Handles a child that is not a terminal.
void History::child(const ExprNode* node) {
    ++others_;
    if (node == nullptr) {
        const ExprNode* const* first = open_.top().node->children;
        fault("ERROR INTERPLOGO: CHILD[%d] is NULL!\n", open_.top().next - 1 - first);
        return;
    }
    if (node->kind != FUNCTION) {
        return;
    }
    const Instruction* instruction = op_instruction(node->op);
    const OpFamily family = instruction != nullptr ? instruction->family : OpFamily::block;
    if (family == OpFamily::branch) {
        branch(*node, instruction->parameter == now_.pen ? 0 : 1);
        return;
    }
    const std::int32_t passes = family == OpFamily::repeat ? instruction->parameter : 0;
    count(passes != 0 ? 1 : 0, passes);
    if (node->count > 0 && node->children != nullptr) {
        ExprNode* const* first = node->children;
        open_.push({node, passes != 0 ? nullptr : first, first + node->count, passes, {}});
    }
}

void History::branch(const ExprNode& node, std::ptrdiff_t chosen) {
    if (node.count < 2) {
        fault("ERROR INTERPLOGO: NUM CHILDREN is %d!\n", node.count);
    } else if (node.children == nullptr) {
        fault("ERROR INTERPLOGO: CHILDREN is NULL!\n", 0);
    } else {
        open_.push({&node, node.children + chosen, node.children + chosen + 1, 0, {}});
    }
}

// Replays known passes; begins the first that is unknown or that the step limit cuts. False when
// the history is full.
bool History::begin_pass(Open& top) {
    while (top.passes > 0) {
        const auto known = passes_.find(key(*top.node, now_.pen));
        const Pass pass = known != passes_.end() ? known->second : Pass{};
        const std::int64_t steps = pass.end.steps - pass.start.steps;
        if (known == passes_.end() || steps > limit_ - now_.steps) {
            top.start = now_;
            top.next = top.node->children;
            return true;
        }
        if (now_.steps - first_ + steps > kMaxTerminals) {
            return false;
        }
        const bool logs = pass.end.faults != pass.start.faults && faults_.size() < kMaxFaultLines;
        const std::int32_t times = steps == 0 && !logs ? top.passes : 1;
        replay(pass, times);
        top.passes -= times;
    }
    open_.pop();
    return true;
}

void History::end_pass(Open& top) {
    if (top.passes == 0) {
        open_.pop();
        return;
    }
    if (top.start.steps >= first_) { // its beginning is still in the history
        remember({top.start, now_}, *top.node);
    }
    --top.passes;
    top.next = nullptr;
}

// Appends the pass to the history once, and counts it `times`.
void History::replay(const Pass& pass, std::int32_t times) {
    const auto steps = static_cast<std::size_t>(pass.end.steps - pass.start.steps);
    OpCode* to = terminals_.room(steps);
    std::copy_n(terminals_.at(static_cast<std::size_t>(pass.start.steps - first_)), steps, to);
    terminals_.take(steps);
    now_.steps += pass.end.steps - pass.start.steps;
    replayed_ += pass.end.steps - pass.start.steps;
    for (std::size_t i = pass.start.faults; i < pass.end.faults; ++i) {
        const Fault again = *faults_.at(i);
        fault(again.line, again.number);
    }
    count(times * (pass.end.repeats - pass.start.repeats),
          times * (pass.end.repetitions - pass.start.repetitions));
    now_.pen = pass.end.pen;
}

void History::remember(const Pass& pass, const ExprNode& repeat) {
    try {
        passes_[key(repeat, pass.start.pen)] = pass;
    } catch (const std::bad_alloc&) {
        fatal_out_of_memory();
    }
}

void History::count(std::int64_t repeats, std::int64_t repetitions) {
    now_.repeats = std::min<std::int64_t>(now_.repeats + repeats, INT32_MAX);
    now_.repetitions = std::min<std::int64_t>(now_.repetitions + repetitions, INT32_MAX);
}

void History::fault(const char* line, std::ptrdiff_t number) {
    if (faults_.size() < kMaxFaultLines) {
        faults_.push({line, static_cast<int>(number)});
        now_.faults = faults_.size();
    }
}

void History::report_faults() const {
    for (std::size_t i = 0; i < faults_.size(); ++i) {
        std::fprintf(stderr, faults_.at(i)->line, faults_.at(i)->number);
    }
}

} // namespace pelmora
