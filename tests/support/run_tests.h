// What every test program's main does.
#pragma once

namespace pelmora_test {

// Runs the tests that the command line asks for, each with a check that no program node outlives
// it. The exit code of the test program.
int run_tests(int* argc, char** argv);

} // namespace pelmora_test
