#pragma once

#include "builtins/function_table.h"

// Handlers of the functions that work on the body of the text. Their arguments are names of
// variables; the answers are left in the variables, and the value of the call is zero. Numbers are
// MKS to the solvers, so a first step is a tenth of an MKS unit or of the start value, and the
// dependent variables count by their MKS numbers whatever their dimensions.
// err: no closed body, a wrong count of arguments, a dependent vector without a component, or what
//      the last of the attempts has failed with.
namespace quantiverse {

// Pairs of a variable and the value it gets, whole and whatever its unit was.
void call_func(const FunctionRow&, const FunctionCall&);
// The n dependent variables that are to become zero, then the n that are varied. After a failure
// they have their values back, but the request stays open: they keep those values, and the next
// statement that works is followed by the report.
void call_solve(const FunctionRow&, const FunctionCall&);
// The dependent variable, then those that are varied. After a failure they have their values back.
// A second attempt, on a logarithmic scale, is made by fmax always and by fmin for one variable
// only.
void call_fmin(const FunctionRow&, const FunctionCall&);
void call_fmax(const FunctionRow&, const FunctionCall&);

}  // namespace quantiverse
