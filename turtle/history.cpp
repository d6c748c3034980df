#include "turtle/history.h"

#include <algorithm>
#include <cstdio>

namespace pelmora {
namespace {

constexpr std::size_t kMostTerminals = 1'000'000;

} // namespace

History::History(const ExprNode* root, PenState pen, std::int64_t steps)
    : root_(root), steps_left_(steps), pen_(pen) {
    if (root != nullptr) {
        open(root, &root_, &root_ + 1, 0);
    }
}

std::span<const OpCode> History::next() {
    if (full_) {
        full_ = false;
        terminals_.shrink(0);
        passes_.clear();
        ++forgotten_;
    } else if (open_.empty()) {
        return {};
    }
    walk();
    return {terminals_.at(0), terminals_.size()};
}

// To the end of the run, or until the history is full.
void History::walk() {
    while (!open_.empty()) {
        Open& top = open_.top();
        if (top.next == nullptr) {
            if (!begin_pass()) {
                return;
            }
        } else if (top.next == top.end) {
            end_pass();
        } else if (const ExprNode* node = *top.next; node != nullptr && node->kind == TERMINAL) {
            if (!terminal(node->op)) {
                return;
            }
            ++top.next;
        } else {
            ++top.next;
            child(node);
        }
    }
}

// False at the end of the steps, or of the room.
bool History::terminal(OpCode op) {
    if (steps_left_ == 0) {
        cut_ = true;
        open_.shrink(0);
        return false;
    }
    if (terminals_.size() == kMostTerminals) {
        full_ = true;
        return false;
    }
    --steps_left_;
    ++nodes_walked_;
    terminals_.push(op);
    pen_ = op == PEN_UP ? 1 : op == PEN_DOWN ? 0 : pen_;
    return true;
}

// One that is no terminal.
void History::child(const ExprNode* node) {
    ++nodes_walked_;
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
        branch(*node, instruction->parameter == pen_ ? 0 : 1);
        return;
    }
    const std::int32_t passes = family == OpFamily::repeat ? instruction->parameter : 0;
    if (passes != 0) {
        count({1, passes}, 1);
    }
    if (node->count > 0 && node->children != nullptr) {
        open(node, passes != 0 ? nullptr : node->children, node->children + node->count, passes);
    }
}

void History::branch(const ExprNode& node, std::ptrdiff_t chosen) {
    if (node.count < 2) {
        fault("ERROR INTERPLOGO: NUM CHILDREN is %d!\n", node.count);
    } else if (node.children == nullptr) {
        fault("ERROR INTERPLOGO: CHILDREN is NULL!\n", 0);
    } else {
        open(&node, node.children + chosen, node.children + chosen + 1, 0);
    }
}

// The other members are of a repeat's pass, and set when it begins.
void History::open(const ExprNode* node, const ExprNode* const* next, const ExprNode* const* end,
                   std::int32_t passes) {
    Open* opened = open_.room(1);
    open_.take(1);
    opened->node = node;
    opened->next = next;
    opened->end = end;
    opened->passes = passes;
}

// Makes the passes that are known and begins the first that is not, which the step limit may cut.
// False when the history is full.
bool History::begin_pass() {
    Open& top = open_.top();
    while (top.passes > 0) {
        const auto known = passes_.find(key(top.node, pen_));
        const std::size_t steps = known != passes_.end() ? known->second.sum.terminals : 0;
        if (known == passes_.end() || static_cast<std::int64_t>(steps) > steps_left_) {
            top.pen = pen_;
            top.start = here();
            top.forgotten = forgotten_;
            top.next = top.node->children;
            return true;
        }
        if (terminals_.size() + steps > kMostTerminals) {
            full_ = true;
            return false;
        }
        const bool logs = known->second.sum.faults != 0 && faults_.size() < kMostFaultLines;
        const std::int32_t times = steps == 0 && !logs ? top.passes : 1;
        replay(known->second, times);
        top.passes -= times;
    }
    open_.pop();
    return true;
}

void History::end_pass() {
    Open& top = open_.top();
    if (top.passes == 0) {
        open_.pop();
        return;
    }
    if (top.forgotten == forgotten_) { // its beginning is still in the history
        remember(top);
    }
    --top.passes;
    top.next = nullptr;
}

// Puts the pass into the history once more, and counts it `times`.
void History::replay(const Pass& pass, std::int32_t times) {
    const std::size_t steps = pass.sum.terminals;
    OpCode* to = terminals_.room(steps);
    std::copy_n(terminals_.at(pass.start.terminals), steps, to);
    terminals_.take(steps);
    steps_left_ -= static_cast<std::int64_t>(steps);
    for (std::size_t i = 0; i < pass.sum.faults; ++i) {
        const Fault again = *faults_.at(pass.start.faults + i);
        fault(again.line, again.number);
    }
    count(pass.sum.counts, times);
    pen_ = pass.leaves;
}

void History::count(const Counts& counts, std::int64_t times) {
    const auto add = [times](std::int64_t sum, std::int64_t number) {
        return std::min<std::int64_t>(sum + times * number, INT32_MAX);
    };
    counts_ = {add(counts_.repeats, counts.repeats), add(counts_.repetitions, counts.repetitions)};
}

void History::fault(const char* line, std::ptrdiff_t number) {
    if (faults_.size() < kMostFaultLines) {
        faults_.push({line, static_cast<int>(number)});
    }
}

void History::report_faults() const {
    for (std::size_t i = 0; i < faults_.size(); ++i) {
        std::fprintf(stderr, faults_.at(i)->line, faults_.at(i)->number);
    }
}

// By the node, whose address is even, and the pen.
std::uintptr_t History::key(const ExprNode* node, PenState pen) {
    return reinterpret_cast<std::uintptr_t>(node) | pen;
}

void History::remember(const Open& done) noexcept {
    const Mark& from = done.start;
    const Mark to = here();
    passes_[key(done.node, done.pen)] = {pen_,
                                         from,
                                         {to.terminals - from.terminals,
                                          to.faults - from.faults,
                                          {to.counts.repeats - from.counts.repeats,
                                           to.counts.repetitions - from.counts.repetitions}}};
}

} // namespace pelmora
