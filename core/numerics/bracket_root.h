#pragma once

#include "numerics/objective.h"
#include "text/text_buf.h"

// Roots of one function of one variable: a search for a change of sign, and Ridders' method on
// what it found. The objective keeps the last point that it was evaluated at, which matters to
// callers that read the answer there; so the points and their order are part of the contract.
namespace quantiverse {

// Two ends, their mid-point, and the values of the function at the three.
struct Bracket {
  double x1 = 0.0;
  double x2 = 0.0;
  double xm = 0.0;
  double f1 = 0.0;
  double f2 = 0.0;
  double fm = 0.0;
};

// Looks for a change of sign on both sides of x0, in steps that begin with dx and grow by
// `factor`; in each pass the left side comes first. A side that can't be evaluated is given up
// for good. At most max_it points on each side.
// true:  `bracket` is complete. An exact zero at x0 gives the ends x0 and x0 + 1 with made-up
//        values, without another evaluation.
// false: a message is in `err`: x0, both sides or the mid-point can't be evaluated, no change of
//        sign, or a mid-point that lies beyond 1.5 times both ends, as near a pole.
bool bi_bracket_zero(const Objective& objective, double x0, double dx, int max_it, double factor,
                     Bracket& bracket, TextBuf& err);

// The root in the bracket, by Ridders' method.
// Accuracy: absolute, xacc, for the last step or the last bracket. At most 600 iterations.
// An end or mid-point that is an exact zero is the result, and nothing is evaluated; any other
// result is evaluated last.
// Failure: 0 when both ends have one sign, or an evaluation fails; the best point when the
// iterations run out, or when the value there exceeds all three of the bracket, as at a pole.
double zriddr(const Objective& objective, const Bracket& bracket, double xacc, TextBuf& err);

}  // namespace quantiverse
