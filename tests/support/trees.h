// Programs from and to text in a short form.
#pragma once

#include "model/expr.h"

#include <cstdio>
#include <functional>
#include <string>

namespace pelmora_test {

// `text` repeated `n` times.
std::string times(int n, const std::string& text);

// The program in `text`, in the form "( BLOCK ( FWD_1 ) )"; owned by the result.
pelmora::ExprTree tree_of(const std::string& text);

// The program as "( BLOCK ( FWD_1 ) )", tokens separated by one space; "none" for null. Does not
// use the program's printer, so that it can be compared with it.
std::string line_of(const pelmora::ExprNode* root);

// The output of a writer such as those of model/print.h.
std::string written(const std::function<void(const pelmora::ExprNode*, std::FILE*)>& write,
                    const pelmora::ExprNode* root);

// Whether every node fulfils the invariants of ExprNode: its kind matches its code, only functions
// have children, and every child's slot points to the element that holds it. Ignores the root's
// slot.
bool links_hold(const pelmora::ExprNode* root);

} // namespace pelmora_test
