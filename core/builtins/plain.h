#pragma once

#include "builtins/function_table.h"

// The handlers of functions from plain numbers to a number: a row's routine does the computing.
// Arguments are scalars without a dimension, where an angle is a plain number (`sin(30 deg)` works
// on radians) and so is an amount of substance. They are checked from the last to the first.
// An argument of +infinity, the mark of a failed result, gives 0.
namespace quantiverse {

inline constexpr int kMostPlainArguments = 5;

// The result is a plain number.
void call_plain(const FunctionRow& row, const FunctionCall& call);
// The same, but the routine sees an argument of +infinity, since it has a message for it.
void call_plain_unguarded(const FunctionRow& row, const FunctionCall& call);
// The result is an angle in radians.
void call_angular(const FunctionRow& row, const FunctionCall& call);
// The result keeps the record of the one argument, so an angle stays an angle.
void call_rounding(const FunctionRow& row, const FunctionCall& call);

}  // namespace quantiverse
