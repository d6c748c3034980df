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

#include "model/expr.h"
#include "model/work_stack.h"

#include <cstdint>
#include <span>
#include <unordered_map>

namespace pelmora {

// What branches ask for: 1 when the pen is up, 0 when it is not.
using PenState = std::uint8_t;

// A run may come by a faulty node very often, steps or no steps; its log ends here.
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
    [[nodiscard]] std::int64_t repeats() const { return counts_.repeats; }
    [[nodiscard]] std::int64_t repetitions() const { return counts_.repetitions; }
    [[nodiscard]] std::int64_t nodes_walked() const { return nodes_walked_; }

    // The faulty nodes that the run came by, in order, up to kMostFaultLines.
    [[nodiscard]] bool has_faults() const { return !faults_.empty(); }
    // Writes a line on the error log for each.
    void report_faults() const;

  private:
    struct Counts {
        std::int64_t repeats;
        std::int64_t repetitions;
    };

    struct Fault {
        const char* line; // a format for:
        int number;
    };

    // Where the run is.
    struct Mark {
        std::size_t terminals;
        std::size_t faults;
        Counts counts;
    };

    // A function whose children are being walked.
    struct Open {
        const ExprNode* node;
        const ExprNode* const* next; // null: a repeat between two passes
        const ExprNode* const* end;
        std::int32_t passes; // left of a repeat, this one included; 0: no repeat
        PenState pen;        // at the start of the repeat's pass, and:
        Mark start;
        std::int64_t forgotten;
    };

    // What a pass of a repeat comes to.
    struct Pass {
        PenState leaves; // at its end
        Mark start;
        Mark sum; // of what it adds
    };

    void walk();
    bool terminal(OpCode op);
    void child(const ExprNode* node);
    void branch(const ExprNode& node, std::ptrdiff_t chosen);
    void open(const ExprNode* node, const ExprNode* const* next, const ExprNode* const* end,
              std::int32_t passes);
    bool begin_pass();
    void end_pass();
    void replay(const Pass& pass, std::int32_t times);
    void count(const Counts& counts, std::int64_t times);
    void fault(const char* line, std::ptrdiff_t number);
    [[nodiscard]] Mark here() const { return {terminals_.size(), faults_.size(), counts_}; }

    static std::uintptr_t key(const ExprNode* node, PenState pen);
    void remember(const Open& done) noexcept; // without memory the program ends

    const ExprNode* root_;
    std::int64_t steps_left_;
    PenState pen_;
    bool cut_ = false;
    bool full_ = false; // of terminals, and there is more to come
    Counts counts_{0, 0};
    std::int64_t nodes_walked_ = 0;
    std::int64_t forgotten_ = 0; // how often the passes were, with the terminals
    WorkStack<OpCode, 10240> terminals_;
    WorkStack<Fault, 1> faults_;
    WorkStack<Open, 64> open_;
    std::unordered_map<std::uintptr_t, Pass> passes_;
};

} // namespace pelmora
