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

} // namespace

// Where a run goes does not depend on what the turtle does, so the lines need no turtle: a run of
// their own, in which steps are only added up, keeps them out of the true one.
void faults_report(const Outline& outline, PenState pen, std::int64_t budget) {
    LinearCode code;
    linear_code_assemble(outline, pen, Work::lines, &code);
    std::int64_t steps = 0;
    int lines = 0;
    const CodeWord* word = code.words.at(0);
    while (word->op != Op::end && steps <= budget && lines < kMostFaultLines) {
        const CodeWord& now = *word++;
        switch (now.op) {
        case Op::add:
            steps += now.steps;
            break;
        case Op::line:
            write_line(now.fault, now.number);
            ++lines;
            break;
        case Op::loop:
            *code.counters.at(now.jump.counter) = {static_cast<std::uint32_t>(now.number),
                                                   now.jump.target};
            break;
        case Op::again:
            if (LoopCounter& loop = *code.counters.at(now.jump.counter); --loop.left == 0) {
                word = code.words.at(loop.done);
                break;
            }
            [[fallthrough]];
        case Op::go:
            word = code.words.at(now.jump.target);
            break;
        default: // this code has no steps
            break;
        }
    }
}

} // namespace pelmora
