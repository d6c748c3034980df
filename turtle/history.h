// What a run of a program executes: its terminals, in order.
//
// The course of a run depends on the pen alone, as branches ask for nothing else. So the tree is
// walked without a turtle; the turtle executes afterwards what the walk came to.
//
// A pass of a repeat does the same whenever it starts with the same pen. The first is walked; from
// then on such a pass is a known stretch of the history and is copied, and one without a step is
// multiplied. So the work of a walk is bounded by the size of the tree and the number of steps,
// whatever the program: a node is walked at most once for each pen state, and once more in the pass
// that the step limit cuts.
#pragma once

#include "model/node.h"
#include "model/work_stack.h"

#include <cstdint>
#include <span>
#include <unordered_map>

namespace pelmora {

// What branches ask for: 1 when the pen is up, 0 when it is not.
using PenState = std::uint8_t;

// A run may visit a faulty node very often, steps or no steps; its log ends here.
inline constexpr std::size_t kMostFaultLines = 10240;

class History {
  public:
    // Of a run that starts with `pen` and may execute `steps` terminals. The tree may be null; it
    // has to stay as it is.
    History(const ExprNode* root, PenState pen, std::int64_t steps);
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    // The terminals that come next, until the next call: at most a million, so that an editor's two
    // billion steps cost time and not memory. Empty when the run is over. The codes are those of
    // the nodes, which need not be instructions.
    std::span<const OpCode> next();

    // What is known of the run when it is over: whether the step limit stopped it, and its counts,
    // which stop at the largest 32-bit value.
    [[nodiscard]] bool is_cut() const { return cut_; }
    [[nodiscard]] std::int64_t repeats() const { return now_.repeats; }
    [[nodiscard]] std::int64_t repetitions() const { return now_.repetitions; }
    [[nodiscard]] std::int64_t nodes_walked() const { return nodes_walked_; }

    // The faulty nodes that the run visited, in order, up to kMostFaultLines.
    [[nodiscard]] bool has_faults() const { return !faults_.empty(); }
    // Writes a line on the error log for each.
    void report_faults() const;

  private:
    // Where the run is.
    struct Mark {
        std::int64_t steps, repeats, repetitions;
        std::size_t faults;
        PenState pen;
    };

    // A function whose children are being walked.
    struct Open {
        const ExprNode* node;
        const ExprNode* const* next; // null: a repeat between two passes
        const ExprNode* const* end;
        std::int32_t passes; // left of a repeat, this one included; 0: no repeat
        Mark start;          // of the pass
    };

    // From where to where a pass of a repeat went.
    struct Pass {
        Mark start, end;
    };

    struct Fault {
        const char* line; // a format for:
        int number;
    };

    bool terminal(OpCode op);
    void child(const ExprNode* node);
    void branch(const ExprNode& node, std::ptrdiff_t chosen);
    bool begin_pass(Open& top);
    void end_pass(Open& top);
    void replay(const Pass& pass, std::int32_t times);
    void count(std::int64_t repeats, std::int64_t repetitions);
    void fault(const char* line, std::ptrdiff_t number);
    // Without memory the program ends.
    void remember(const Pass& pass, const ExprNode& repeat) noexcept;

    const ExprNode* root_;
    const std::int64_t limit_;
    std::int64_t first_ = 0; // the step of the first terminal that is remembered
    Mark now_;
    bool cut_ = false;
    std::int64_t nodes_walked_ = 0;
    WorkStack<OpCode, 10240> terminals_;
    WorkStack<Fault, 1> faults_;
    WorkStack<Open, 64> open_;
    std::unordered_map<std::uintptr_t, Pass> passes_;
};

} // namespace pelmora
