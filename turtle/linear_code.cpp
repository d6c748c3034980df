#include "turtle/linear_code.h"

#include <array>
#include <cstddef>

namespace pelmora {
namespace {

constexpr CodeWord word_of(const Instruction& instruction) {
    const std::int16_t n = instruction.parameter;
    switch (instruction.family) {
    case OpFamily::forward:
        return {Op::forward, {}, n, 0, {.distance = static_cast<double>(n)}};
    case OpFamily::turn:
        return {Op::turn, {}, n, 0, {.turns = turns_one(n > 0)}};
    case OpFamily::red:
        return {Op::color, {}, 0, 0, {.increment = color_increment(n, 0, 0)}};
    case OpFamily::green:
        return {Op::color, {}, 0, 0, {.increment = color_increment(0, n, 0)}};
    case OpFamily::blue:
        return {Op::color, {}, 0, 0, {.increment = color_increment(0, 0, n)}};
    case OpFamily::pen:
        return {Op::pen, {}, n, 0, {}};
    case OpFamily::block: // as a terminal it does nothing
    case OpFamily::branch:
    case OpFamily::repeat:
        break;
    }
    return {Op::idle, {}, 0, 0, {}};
}

// The word of every terminal, by its code.
constexpr auto kTerminalWords = [] {
    std::array<CodeWord, 256> words{};
    words.fill({Op::idle, {}, 0, 0, {}});
    for (const Instruction& instruction : kInstructions) {
        words[instruction.code] = word_of(instruction);
    }
    return words;
}();

// Follows a run through the outline. At every moment it knows the pen state of the run, so it takes
// the chosen child of a branch and leaves the other out.
//
// The passes of a repeat may start in either pen state, and code differs by it; so a loop has up to
// two passes in the code, made when the run first comes to them, and `again` leads from each to the
// right one. A repeat that is met once more, in the second pass of an outer one, uses the passes
// that are there: no node has code more than twice.
class Assembler {
  public:
    Assembler(const Outline& outline, PenState pen, Work work, LinearCode* code);

    void assemble();

  private:
    enum class Span : std::uint8_t {
        choice, // the first child of a branch
        once,   // the one pass of a repeat that has work
        loop,   // a pass of a loop
    };

    // A stretch of the outline with something to do at its end.
    struct Open {
        Span span;
        PenState leaves;    // the pen state after the whole
        std::uint32_t end;  // of the stretch
        std::uint32_t item; // the branch or repeat
        std::uint32_t word; // loop: its first word
    };

    void item(const Item& item);
    void function(const Item& item, const FunctionOutline& function);
    void branch(const Item& item);
    void repeat(const Item& item, const FunctionOutline& function, PenState leaves);
    void close();
    void close_pass(const Item& item);
    void find_spin(const Open& loop);
    void leave_loop();
    [[nodiscard]] bool has_work(const Cost& cost) const;
    std::uint32_t& pass_start(const Item& item);
    [[nodiscard]] std::uint32_t here() const;
    void settle();
    void step(const CodeWord& word);
    void control(Op op, std::int16_t number, Jump jump);

    const Outline& outline_;
    const Work work_;
    LinearCode& code_;
    PenState pen_;
    std::uint32_t at_ = 0; // the item
    Cost owed_{};          // to be added before the next word
    std::uint32_t leg_ = 0;
    std::uint32_t leg_steps_ = 0;
    WorkStack<Open, 32> open_;
    // Where the passes of each repeat stand in the code, by the pen state in which they start. No
    // pass stands at 0, as the loop word comes before it.
    WorkStack<std::array<std::uint32_t, 2>, 128> passes_;
};

Assembler::Assembler(const Outline& outline, PenState pen, Work work, LinearCode* code)
    : outline_(outline), work_(work), code_(*code), pen_(pen) {
    for (std::size_t i = 0; i < outline_.functions.size(); ++i) {
        passes_.push({0, 0});
        code_.counters.push({0, 0});
    }
}

void Assembler::assemble() {
    for (;;) {
        while (!open_.empty() && at_ == open_.top().end) {
            close();
        }
        if (at_ == outline_.items.size()) {
            break;
        }
        item(*outline_.items.at(at_));
    }
    control(Op::end, 0, {0, 0});
}

void Assembler::item(const Item& item) {
    switch (item.kind) {
    case ItemKind::pen:
        pen_ = static_cast<PenState>(item.number);
        [[fallthrough]];
    case ItemKind::terminal:
        step(kTerminalWords[item.code]);
        ++at_;
        return;
    case ItemKind::fault:
        if (work_ == Work::lines) {
            settle();
            code_.words.push({Op::line, static_cast<Fault>(item.code), item.number, 0, {}});
        }
        ++at_;
        return;
    case ItemKind::block:
    case ItemKind::branch:
    case ItemKind::repeat:
        function(item, *outline_.functions.at(item.function));
        return;
    }
}

void Assembler::function(const Item& item, const FunctionOutline& function) {
    const Visit visit = outline_visit(item, function, pen_);
    if (!has_work(visit.cost)) {
        owed_ = owed_ + visit.cost;
        pen_ = visit.leaves;
        at_ = function.end;
    } else if (item.kind == ItemKind::branch) {
        branch(item);
    } else if (item.kind == ItemKind::repeat) {
        repeat(item, function, visit.leaves);
    } else {
        ++at_;
    }
}

void Assembler::branch(const Item& item) {
    const Item& first = *outline_.items.at(at_ + 1);
    const bool leaf = first.kind <= ItemKind::fault;
    const std::uint32_t second = leaf ? at_ + 2 : outline_.functions.at(first.function)->end;
    if (pen_ == item.number) {
        open_.push({Span::choice, 0, second, at_, 0});
        ++at_;
    } else {
        at_ = second;
    }
}

void Assembler::repeat(const Item& item, const FunctionOutline& function, PenState leaves) {
    const Course& pass = function.pass;
    const PenState then = pass[pen_].leaves;
    // A pass that changes the pen may be the only one with work, when the others are all the same
    // and have none. It needs no loop, and must not get one: a million such repeats around one step
    // would be a million words of work each time.
    if (then != pen_ && pass[then].leaves == then && !has_work(pass[then].cost)) {
        owed_ = owed_ + Cost{0, 1, static_cast<std::uint32_t>(item.number), 0};
        open_.push({Span::once, leaves, function.end, at_, 0});
        ++at_;
        return;
    }
    settle();
    open_.push({Span::loop, leaves, function.end, at_, here()});
    control(Op::loop, item.number, {0, item.function});
    std::uint32_t& start = pass_start(item);
    if (start == 0) {
        start = here();
        ++at_;
    } else {
        control(Op::go, 0, {start, 0});
        leave_loop();
    }
}

// The run comes to the end of the innermost stretch.
void Assembler::close() {
    const Open& top = open_.top();
    const Item& item = *outline_.items.at(top.item);
    const FunctionOutline& function = *outline_.functions.at(item.function);
    switch (top.span) {
    case Span::choice:
        at_ = function.end;
        open_.pop();
        return;
    case Span::once:
        owed_ = owed_ + static_cast<std::uint32_t>(item.number - 1) * function.pass[pen_].cost;
        open_.pop();
        return;
    case Span::loop:
        close_pass(item);
        return;
    }
}

void Assembler::close_pass(const Item& item) {
    settle();
    std::uint32_t& start = pass_start(item);
    const bool known = start != 0;
    if (!known) {
        start = here() + 1;
    }
    control(Op::again, 0, {start, item.function});
    if (known) {
        if (work_ == Work::steps && start == open_.top().word + 1) {
            find_spin(open_.top());
        }
        leave_loop();
    } else {
        at_ = open_.top().item + 1;
    }
}

// To the loop that ends here.
void Assembler::find_spin(const Open& loop) {
    constexpr std::int64_t kFewestSteps = 16; // below, a spin is no gain
    CodeWord& first = *code_.words.at(loop.word);
    const std::uint32_t body = loop.word + 1;
    const std::uint32_t steps = code_.words.at(body)->leg;
    const bool only_steps = here() - 1 - body == steps;
    if (!only_steps || std::int64_t{steps} * first.number < kFewestSteps) {
        return;
    }
    for (std::uint32_t at = body; at < body + steps; ++at) {
        if (code_.words.at(at)->op == Op::forward) {
            return;
        }
    }
    first.op = Op::spin;
}

void Assembler::leave_loop() {
    const Open loop = open_.pop();
    code_.words.at(loop.word)->jump.target = here();
    pen_ = loop.leaves;
    at_ = loop.end;
}

bool Assembler::has_work(const Cost& cost) const {
    return (work_ == Work::steps ? cost.steps : cost.lines) != 0;
}

// Where the pass of this repeat that starts in the present pen state stands; 0 before it is made.
std::uint32_t& Assembler::pass_start(const Item& item) {
    return (*passes_.at(item.function))[pen_];
}

std::uint32_t Assembler::here() const {
    return static_cast<std::uint32_t>(code_.words.size());
}

// Before anything may stop the run, what is owed has to be counted.
void Assembler::settle() {
    CodeWord add{Op::add, {}, 0, 0, {}};
    if (work_ == Work::lines) {
        add.steps = owed_.steps;
    } else {
        add.tally = {owed_.repeats, owed_.repetitions};
    }
    if (work_ == Work::lines ? owed_.steps != 0 : owed_.repetitions != 0) {
        code_.words.push(add);
    }
    owed_ = {};
}

void Assembler::step(const CodeWord& word) {
    if (work_ == Work::lines) {
        ++owed_.steps;
        return;
    }
    settle();
    code_.words.push(word);
    ++leg_steps_;
}

// Ends a leg. The next one starts behind the word.
void Assembler::control(Op op, std::int16_t number, Jump jump) {
    settle();
    code_.words.push({op, {}, number, 0, {.jump = jump}});
    code_.words.at(leg_)->leg = leg_steps_;
    leg_ = here();
    leg_steps_ = 0;
}

} // namespace

void linear_code_assemble(const Outline& outline, PenState pen, Work work, LinearCode* code) {
    Assembler(outline, pen, work, code).assemble();
}

} // namespace pelmora
