#include "turtle/faults.h"

#include "turtle/linear_code.h"

#include <cstdio>

namespace pelmora {
namespace {

void write_line(Fault fault, int number) {
    switch (fault) {
    case Fault::few_children:
        std::fprintf(stderr, "ERROR INTERPLOGO: NUM CHILDREN is %d!\n", number);
        return;
    case Fault::no_children:
        std::fprintf(stderr, "ERROR INTERPLOGO: CHILDREN is NULL!\n");
        return;
    case Fault::null_child:
        std::fprintf(stderr, "ERROR INTERPLOGO: CHILD[%d] is NULL!\n", number);
        return;
    }
}

struct Loop {
    int left; // passes
    std::uint32_t done;
};

} // namespace

// Where a run goes does not depend on what the turtle does, so the lines need no turtle: a run of
// their own, in which steps are only added up, keeps them out of the true one.
void faults_report(const Outline& outline, PenState pen, std::int64_t budget) {
    LinearCode code;
    linear_code_assemble(outline, pen, Work::lines, &code);
    WorkStack<Loop> loops;
    std::int64_t steps = 0;
    int lines = 0;
    const CodeWord* word = code.at(0);
    while (word->op != Op::end && steps <= budget && lines < kMostFaultLines) {
        const CodeWord& now = *word++;
        switch (now.op) {
        case Op::add:
            steps += now.steps;
            break;
        case Op::line:
            write_line(static_cast<Fault>(now.part), now.number);
            ++lines;
            break;
        case Op::loop:
            loops.push({now.number, now.target});
            break;
        case Op::again:
            if (--loops.top().left == 0) {
                word = code.at(loops.pop().done);
                break;
            }
            [[fallthrough]];
        case Op::go:
            word = code.at(now.target);
            break;
        default: // this code has no steps
            break;
        }
    }
}

} // namespace pelmora
