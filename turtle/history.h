// What a run of a program executes: its terminals, in order.
//
// The control flow of a run depends only on the pen, as branches test nothing else. So the tree is
// walked without a turtle, which executes the resulting list of terminals afterwards.
//
// Passes of a repeat that start with the same pen state do the same. The first is walked; later
// ones are copied within the history, and those without a step are only counted. So the size of the
// tree and the number of steps bound the work: a node is walked at most once for each pen state
// in every batch of half a million to a million steps, and once more in a pass that the end of a
// batch or the step limit cuts. docs/design.md compares this with what was tried before.
#pragma once

#include "model/node.h"
#include "model/work_stack.h"

#include <cstdint>
#include <span>
#include <unordered_map>

namespace pelmora {

// What branches test: 1 when the pen is up, 0 when it is not.
using PenState = std::uint8_t;

// The most faults that a run logs: it may visit a faulty node any number of times.
inline constexpr std::size_t kMaxFaultLines = 10240;

// The most terminals of a batch.
inline constexpr std::int64_t kMaxTerminals = 1'000'000;

class History {
  public:
    // Of a run that starts with `pen` and may execute `steps` terminals. The tree is borrowed, must
    // not change and may be null.
    History(const ExprNode* root, PenState pen, std::int64_t steps);
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    // The next terminals, valid until the next call: at most a million, so that an editor's two
    // billion steps cost time and not memory. Empty when the run is over. The codes are those of
    // the nodes, which need not be instructions.
    std::span<const OpCode> next();

    // Valid when the run is over: whether the step limit stopped it, and its counts, which saturate
    // at the largest 32-bit value.
    [[nodiscard]] bool is_cut() const { return cut_; }
    [[nodiscard]] std::int64_t repeats() const { return now_.repeats; }
    [[nodiscard]] std::int64_t repetitions() const { return now_.repetitions; }
    [[nodiscard]] std::int64_t nodes_walked() const { return others_ + now_.steps - replayed_; }

    // The faulty nodes that the run visited, in order, up to kMaxFaultLines.
    [[nodiscard]] bool has_faults() const { return !faults_.empty(); }
    // Writes a line on the error log for each.
    void report_faults() const;

  private:
    // A position in the run.
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
        std::int32_t passes; // that a repeat has left, with this one; 0: no repeat
        Mark start;          // of the pass
    };

    // A finished pass of a repeat.
    struct Pass {
        Mark start, end;
    };

    struct Fault {
        const char* line; // a format for `number`
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
    void remember(const Pass& pass, const ExprNode& repeat);

    const ExprNode* root_;
    const std::int64_t limit_;
    std::int64_t first_ = 0; // the step number of terminals_[0]
    Mark now_;
    bool cut_ = false;
    std::int64_t others_ = 0;   // visits of nodes that are no terminals
    std::int64_t replayed_ = 0; // steps that were copied
    WorkStack<OpCode, 10240> terminals_;
    WorkStack<Fault, 1> faults_;
    WorkStack<Open, 64> open_;
    std::unordered_map<std::uintptr_t, Pass> passes_;
};

} // namespace pelmora
