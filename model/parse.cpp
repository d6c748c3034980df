#include "model/parse.h"

#include "model/work_stack.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace pelmora {
namespace {

constexpr std::size_t kMaxChildren = 64; // a block stops reading after this many
constexpr std::size_t kSymbolBytes = 128;
constexpr std::size_t kSymbolLimit = 127;

// Limits the faults that are reported on the error log.
class Faults {
  public:
    explicit Faults(int* left) : left_(left) {}

    // True when one more may be reported; it is then counted.
    bool more() const {
        const bool allowed = *left_ > 0;
        *left_ -= allowed ? 1 : 0;
        return allowed;
    }

  private:
    int* left_;
};

bool is_space(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

const char* skip_space(const char* at) {
    while (is_space(*at)) {
        ++at;
    }
    return at;
}

// Reads up to the next white space. `buffer` stays empty when there is no symbol or it has `limit`
// characters or more; the cursor is then after the characters read.
void parse_symbol(const char*& cursor, char* buffer, std::size_t limit) {
    const char* start = cursor;
    std::size_t length = 0;
    while (length < limit && start[length] != '\0' && !is_space(start[length])) {
        ++length;
    }
    cursor = start + length;
    if (length == limit) {
        length = 0;
    }
    std::memcpy(buffer, start, length);
    buffer[length] = '\0';
}

// Reads "( NAME", and the ")" of a terminal. Null when there is no valid node. The cursor is at the
// "(".
ExprNode* parse_node(const char*& cursor, Faults faults) {
    const char* entry = cursor;
    cursor = skip_space(cursor + 1);
    if (*cursor == ')' || *cursor == '\0') {
        if (faults.more()) {
            std::fprintf(stderr, "ERROR: EMPTY EXPRESSION <%.32s>\n", entry);
        }
        return nullptr;
    }
    char symbol[kSymbolBytes];
    parse_symbol(cursor, symbol, kSymbolLimit);
    if (symbol[0] == '\0') {
        if (faults.more()) {
            std::fprintf(stderr, "ERROR: BAD SYMBOL <%.32s>\n", cursor);
        }
        return nullptr;
    }
    const OpCode op = op_lookup(symbol);
    if (op == NO_OP) {
        if (faults.more()) {
            std::fprintf(stderr, "parse_sub_tree: UNKNOWN OP '%.64s' @ <%.64s>\n", symbol, cursor);
        }
        return nullptr;
    }
    ExprNode* node = expr_new_node(op_kind(op));
    node->op = op;
    if (node->kind == TERMINAL) {
        cursor = skip_space(cursor);
        if (*cursor == ')') {
            ++cursor;
        } else {
            if (faults.more()) {
                std::fprintf(stderr, "ERROR: TERMINAL Not terminated! <%.96s>\n", entry);
            }
        }
    }
    return node;
}

// The function nodes whose children are being read, the innermost on top.
class OpenBlocks {
  public:
    explicit OpenBlocks(Faults faults) : faults_(faults) {}

    [[nodiscard]] bool empty() const { return blocks_.empty(); }

    // Opens the block of `node`, whose text begins at `text`.
    void open(ExprNode* node, const char* text) {
        blocks_.push({node, text, children_.size(), false});
    }

    // Gives the innermost block its next child, null for one that could not be read.
    void add(ExprNode* child, const char* cursor) {
        Block& block = blocks_.top();
        if (child == nullptr) {
            if (faults_.more()) {
                std::fprintf(stderr, "ERROR: BAD CHILD - <%.32s>\nEXPR: %.96s\n", cursor,
                             block.text);
            }
            block.ended = true;
            return;
        }
        children_.push(child);
        block.ended = children_.size() - block.first == kMaxChildren;
    }

    // Moves the cursor to the next child of the innermost block. False when there is none.
    bool at_child(const char*& cursor) {
        if (blocks_.top().ended) {
            return false;
        }
        cursor = skip_space(cursor);
        if (*cursor != '(' && *cursor != ')') {
            if (faults_.more()) {
                std::fprintf(stderr, "ERROR: parse_expr_block: BAD CHILD EXPR <%.64s>\n", cursor);
            }
        }
        return *cursor == '(';
    }

    // Ends the innermost block and returns its node, with the children if the cursor is at its ")".
    ExprNode* close(const char*& cursor) {
        const Block block = blocks_.pop();
        const std::size_t count = children_.size() - block.first;
        ExprNode** children = children_.at(block.first);
        if (*cursor == ')') {
            attach(block.node, children, count);
            ++cursor;
        } else {
            if (faults_.more()) {
                std::fprintf(stderr, "parse_expr_block: UNSUCCESSFUL\n");
            }
            std::for_each_n(children, count, expr_free_tree);
        }
        children_.shrink(block.first);
        if (count == kMaxChildren) {
            if (faults_.more()) {
                std::fprintf(stderr, "ERROR: TOO MANY CHILDREN - <%.32s>\nEXPR: %.96s\n", cursor,
                             block.text);
            }
        }
        return block.node;
    }

  private:
    struct Block {
        ExprNode* node;
        const char* text;
        std::size_t first; // index of its first child in children_
        bool ended;        // reads no more children
    };

    static void attach(ExprNode* node, ExprNode* const* children, std::size_t count) {
        node->children = expr_new_children(static_cast<int>(count));
        node->count = static_cast<std::int16_t>(count);
        for (std::size_t i = 0; i < count; ++i) {
            expr_place(node->children + i, children[i]);
        }
    }

    Faults faults_;
    WorkStack<Block> blocks_;
    // The children of all open blocks, those of an inner block above those of the outer one. One
    // shared stack saves a list of 64 per level.
    WorkStack<ExprNode*> children_;
};

// The subtree whose "(" the cursor is at, or null.
ExprNode* parse_sub_tree(const char*& cursor, Faults faults) {
    OpenBlocks blocks(faults);
    for (;;) {
        ExprNode* node = parse_node(cursor, faults);
        if (node != nullptr && node->kind == FUNCTION) {
            blocks.open(node, cursor);
        } else if (blocks.empty()) {
            return node;
        } else {
            blocks.add(node, cursor);
        }
        while (!blocks.at_child(cursor)) {
            ExprNode* done = blocks.close(cursor);
            if (blocks.empty()) {
                return done;
            }
            blocks.add(done, cursor);
        }
    }
}

} // namespace

ExprNode* parse_expr(const char* text) {
    int faults_left = kMaxParseFaults;
    return parse_expr(text, &faults_left);
}

ExprNode* parse_expr(const char* text, int* faults_left) {
    const Faults faults(faults_left);
    const char* cursor = std::strchr(text, '(');
    if (cursor == nullptr) {
        if (faults.more()) {
            std::fprintf(stderr, "ERROR: PARSE EXPR has no opening paren!\n");
        }
        return nullptr;
    }
    return parse_sub_tree(cursor, faults);
}

} // namespace pelmora
