// Programs from and to text, short enough for the tables of tests.
#pragma once

#include "model/expr.h"

#include <cstdio>
#include <functional>
#include <string>

namespace pelmora_test {

// `text` written `n` times.
std::string times(int n, const std::string& text);

// The program in `text`, in the form "( BLOCK ( FWD_1 ) )"; owned by the result.
pelmora::ExprTree tree_of(const std::string& text);

// The program as "( BLOCK ( FWD_1 ) )", tokens parted by one space; "none" for null. Made without
// the program's own printer, so that it can be held against it.
std::string line_of(const pelmora::ExprNode* root);

// What a writer such as those of model/print.h writes.
std::string written(const std::function<void(const pelmora::ExprNode*, std::FILE*)>& write,
                    const pelmora::ExprNode* root);

// Whether every node is as the invariants of ExprNode have it: kind by code, no children but of
// functions, and every child's slot at the element that holds it. The root's slot is not looked at.
bool links_hold(const pelmora::ExprNode* root);

} // namespace pelmora_test
