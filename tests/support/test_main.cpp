#include "tests/support/run_tests.h"

int main(int argc, char** argv) {
    return pelmora_test::run_tests(&argc, argv);
}
