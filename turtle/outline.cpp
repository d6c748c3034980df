#include "turtle/outline.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace pelmora {
namespace {

std::uint32_t capped(std::uint64_t sum) {
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(sum, kMost));
}

std::uint32_t sum_of(std::uint32_t a, std::uint32_t b) {
    return capped(std::uint64_t{a} + b);
}

std::uint32_t product_of(std::uint32_t a, std::uint32_t b) {
    return capped(std::uint64_t{a} * b);
}

constexpr Cost kNothing{0, 0, 0, 0};
constexpr Course kStandStill{{{kNothing, 0}, {kNothing, 1}}};

// The course of one subtree after the other.
void follow(Course* so_far, const Course& next) {
    for (Visit& visit : *so_far) {
        const Visit& then = next[visit.leaves];
        visit = {visit.cost + then.cost, then.leaves};
    }
}

// A set of pen states.
using PenStates = std::uint8_t;
constexpr PenStates kEither = 3;

constexpr PenStates only(PenState pen) {
    return static_cast<PenStates>(1U << pen);
}

// Leaves out the children that no branch ever chooses: bred programs have most of their nodes there
// in the end. A repeat is first taken to come back to the pen state it starts with. Where it does
// not, and something was left out of it, it is looked at once more for both states. When that comes
// to more than one look at everything, all repeats are taken to start in both, from the beginning.
class Surveyor {
  public:
    Surveyor(std::int64_t budget, Outline* outline) : budget_(budget), outline_(*outline) {}

    void survey(const ExprNode* root, PenState pen);

  private:
    // A function whose children are being looked at.
    struct Open {
        Item item;
        Course pass; // of the children so far
        const ExprNode* const* first;
        const ExprNode* const* next;
        const ExprNode* const* end;
        PenStates states;    // those in which the run may come by, at any time
        std::size_t skipped; // how much had been left out before it
        std::size_t inside;  // the item that is its first child
        // Where the run comes by for the first time: the pen, and the steps that it has then made.
        PenState pen;
        std::int64_t steps;
    };

    void child(const ExprNode* node);
    void terminal(std::uint8_t op);
    void function(const ExprNode& node);
    void fault(Fault fault, std::ptrdiff_t number);
    void open(Item item, const ExprNode* const* children, int count);
    void close();
    [[nodiscard]] bool has_wrong_start(const Open& done) const;
    void look_again();
    void take(const Course& course);
    [[nodiscard]] PenState choosing() const;
    [[nodiscard]] PenStates states_here() const;

    std::int64_t budget_;
    std::size_t skipped_ = 0;
    std::size_t seen_again_ = 0;
    bool either_ = false; // repeats are taken to start in both pen states
    bool cut_ = false;    // the run ends before what comes now
    Outline& outline_;
    WorkStack<Open, 32> open_;
};

void Surveyor::survey(const ExprNode* root, PenState pen) {
    const bool any = root != nullptr;
    outline_.items.push({ItemKind::block, 0, 1, 0});
    outline_.functions.push({});
    open_.push({.item = {ItemKind::block, 0, 1, 0},
                .pass = kStandStill,
                .first = &root,
                .next = &root,
                .end = &root + any,
                .states = only(pen),
                .skipped = 0,
                .inside = outline_.items.size(),
                .pen = pen,
                .steps = 0});
    while (!open_.empty()) {
        Open& top = open_.top();
        if (top.next == top.end || cut_) {
            close();
        } else {
            child(*top.next++);
        }
    }
}

void Surveyor::child(const ExprNode* node) {
    if (node == nullptr) {
        fault(Fault::null_child, open_.top().next - 1 - open_.top().first);
    } else if (node->kind == TERMINAL) {
        terminal(node->op);
    } else if (open_.top().item.kind == ItemKind::branch && states_here() == 0) {
        ++skipped_;
        outline_.items.push({ItemKind::terminal, 0, 0, 0}); // to have something in its place
    } else if (node->kind == FUNCTION) {
        function(*node);
    } else {
        open({ItemKind::block, 0, 1, 0}, nullptr, 0);
    }
}

void Surveyor::terminal(std::uint8_t op) {
    Open& top = open_.top();
    const bool sets_pen = op == PEN_UP || op == PEN_DOWN;
    const PenState pen = op == PEN_UP ? 1 : 0;
    if (sets_pen) {
        outline_.items.push({ItemKind::pen, op, pen, 0});
    } else {
        outline_.items.push({ItemKind::terminal, op, 0, 0});
    }
    if (top.item.kind == ItemKind::branch) {
        Visit& visit = top.pass[choosing()];
        visit = {{1, 0, 0, 0}, sets_pen ? pen : visit.leaves};
        return;
    }
    // A node has at most 32,767 children, so that this runs past kMost a little but never over.
    for (Visit& visit : top.pass) {
        ++visit.cost.steps;
        visit.leaves = sets_pen ? pen : visit.leaves;
    }
}

void Surveyor::function(const ExprNode& node) {
    const Instruction* instruction = op_instruction(node.op);
    const OpFamily family = instruction == nullptr ? OpFamily::block : instruction->family;
    const int count = node.children == nullptr ? 0 : node.count;
    if (family == OpFamily::branch) {
        if (node.count < 2) {
            fault(Fault::few_children, node.count);
        } else if (node.children == nullptr) {
            fault(Fault::no_children, 0);
        } else {
            open({ItemKind::branch, 0, instruction->parameter, 0}, node.children, 2);
        }
    } else if (family == OpFamily::repeat) {
        open({ItemKind::repeat, 0, instruction->parameter, 0}, node.children, count);
    } else {
        open({ItemKind::block, 0, 1, 0}, node.children, count);
    }
}

void Surveyor::fault(Fault fault, std::ptrdiff_t number) {
    outline_.items.push(
        {ItemKind::fault, static_cast<std::uint8_t>(fault), static_cast<std::int16_t>(number), 0});
    const Cost line{0, 0, 0, 1};
    take({{{line, 0}, {line, 1}}});
}

void Surveyor::open(Item item, const ExprNode* const* children, int count) {
    constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::min() / 2;
    const Open& above = open_.top();
    const bool passed_by = above.item.kind == ItemKind::branch && choosing() != above.pen;
    const Visit& here = above.pass[above.pen];
    const std::int64_t steps = passed_by ? kNever : above.steps + here.cost.steps;
    if (steps > budget_) {
        cut_ = true;
        return;
    }
    const bool both = either_ && item.kind == ItemKind::repeat;
    const PenStates states = both ? kEither : states_here();
    item.function = static_cast<std::uint32_t>(outline_.functions.size());
    outline_.items.push(item);
    outline_.functions.push({});
    open_.push({item, kStandStill, children, children, children + std::max(count, 0), states,
                skipped_, outline_.items.size(), here.leaves, steps});
}

void Surveyor::close() {
    if (has_wrong_start(open_.top())) {
        look_again();
        return;
    }
    const Open done = open_.pop();
    FunctionOutline& function = *outline_.functions.at(done.item.function);
    function = {static_cast<std::uint32_t>(outline_.items.size()), done.pass};
    if (!open_.empty()) {
        take({outline_visit(done.item, function, 0), outline_visit(done.item, function, 1)});
    }
}

// Whether it is a repeat, and left something out that one of its passes may choose.
bool Surveyor::has_wrong_start(const Open& done) const {
    if (done.item.kind != ItemKind::repeat || done.item.number < 2 || cut_) {
        return false;
    }
    const PenState start = done.states == only(0) ? 0 : 1;
    return skipped_ != done.skipped && done.states != kEither && done.pass[start].leaves != start;
}

// At the repeat on top, or at everything.
void Surveyor::look_again() {
    constexpr std::size_t kFew = 1000; // items that nobody waits for
    if (seen_again_ > outline_.items.size() + kFew) {
        either_ = true;
        open_.shrink(1);
    }
    Open& again = open_.top();
    seen_again_ += outline_.items.size() - again.inside;
    outline_.items.shrink(again.inside);
    outline_.functions.shrink(again.item.function + 1);
    skipped_ = again.skipped;
    again.pass = kStandStill;
    again.next = again.first;
    again.states = either_ ? again.states : kEither;
}

void Surveyor::take(const Course& course) {
    Open& top = open_.top();
    if (top.item.kind == ItemKind::branch) {
        top.pass[choosing()] = course[choosing()];
    } else {
        follow(&top.pass, course);
    }
}

// The pen state in which the branch on top chooses the child at hand.
PenState Surveyor::choosing() const {
    const Open& top = open_.top();
    const bool first = top.next - top.first == 1;
    return static_cast<PenState>(first ? top.item.number : 1 - top.item.number);
}

// The pen states in which the run may come to the child at hand.
PenStates Surveyor::states_here() const {
    const Open& top = open_.top();
    if (top.item.kind == ItemKind::branch) {
        return top.states & only(choosing());
    }
    PenStates states = 0;
    for (const PenState pen : {PenState{0}, PenState{1}}) {
        if ((top.states & only(pen)) != 0) {
            states |= only(top.pass[pen].leaves);
        }
    }
    return states;
}

} // namespace

Cost operator+(const Cost& a, const Cost& b) {
    return {sum_of(a.steps, b.steps), sum_of(a.repeats, b.repeats),
            sum_of(a.repetitions, b.repetitions), sum_of(a.lines, b.lines)};
}

Cost operator*(std::uint32_t times, const Cost& cost) {
    return {product_of(times, cost.steps), product_of(times, cost.repeats),
            product_of(times, cost.repetitions), product_of(times, cost.lines)};
}

Passes outline_passes(std::int16_t count, const Course& pass, PenState pen) {
    const auto n = static_cast<std::uint32_t>(count);
    const PenState then = pass[pen].leaves;
    Passes passes{{0, 0}, then};
    if (then == pen) {
        passes.from[pen] = n;
    } else if (pass[then].leaves == then) {
        passes.from[pen] = 1;
        passes.from[then] = n - 1;
    } else {
        passes.from[pen] = (n + 1) / 2;
        passes.from[then] = n / 2;
        passes.leaves = n % 2 == 0 ? pen : then;
    }
    return passes;
}

Visit outline_visit(const Item& item, const FunctionOutline& function, PenState pen) {
    if (item.kind != ItemKind::repeat) {
        return function.pass[pen];
    }
    const Passes passes = outline_passes(item.number, function.pass, pen);
    const Cost own{0, 1, static_cast<std::uint32_t>(item.number), 0};
    return {own + passes.from[0] * function.pass[0].cost + passes.from[1] * function.pass[1].cost,
            passes.leaves};
}

void outline_survey(const ExprNode* root, PenState pen, std::int64_t budget, Outline* outline) {
    Surveyor(budget, outline).survey(root, pen);
}

} // namespace pelmora
