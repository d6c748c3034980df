#include "model/instruction.h"

#include <cstdio>
#include <cstring>

namespace pelmora {
namespace {

// Reading a big population looks up millions of names, so they are hashed: open addressing in a
// table that is computed at compile time and at most a quarter full.
constexpr std::size_t kHashSlots = 256;
static_assert(kInstructions.size() <= kHashSlots / 4);

constexpr std::size_t hash_of(const char* name) {
    std::uint32_t hash = 0;
    for (; *name != '\0'; ++name) {
        hash = (hash ^ static_cast<unsigned char>(*name)) * 0x9E3779B1U;
    }
    return hash >> 24U;
}
static_assert(kHashSlots == std::size_t{1} << 8U);

constexpr auto kHashed = [] {
    std::array<OpCode, kHashSlots> table{};
    for (const Instruction& instruction : kInstructions) {
        std::size_t at = hash_of(instruction.name);
        while (table[at] != NO_OP) {
            at = (at + 1) % kHashSlots;
        }
        table[at] = instruction.code;
    }
    return table;
}();

} // namespace

const char* op_name(int code) {
    if (const Instruction* instruction = op_instruction(code)) {
        return instruction->name;
    }
    static char unknown[32];
    std::snprintf(unknown, sizeof unknown, "UNKNOWN[%d]", code);
    return unknown;
}

OpCode op_lookup(const char* name) {
    for (std::size_t at = hash_of(name); kHashed[at] != NO_OP; at = (at + 1) % kHashSlots) {
        if (std::strcmp(op_instruction(kHashed[at])->name, name) == 0) {
            return kHashed[at];
        }
    }
    return NO_OP;
}

} // namespace pelmora
