#pragma once

#include "numerics/objective.h"
#include "text/text_buf.h"
#include "text/vectors.h"

// Systems of n equations in n unknowns: Broyden's and Newton's method, both with a line search
// on f, half the sum of the squares of the functions. Vectors and matrices count from 1. The
// objective gives n numbers and keeps the last point that it was evaluated at, which isn't x
// where a line search gave up.
namespace quantiverse {

// Both look for a root from x on, and leave x where they end. At most 200 iterations.
// true:  x counts as a solution: every function is below 1e-6 (1e-8 at the start), or no
//        coordinate changes by more than 1e-7 of it (of 1 for small ones).
// false: no solution, or a message is in `err`: an evaluation failed, a singular matrix, or no
//        end within the iterations.
// No test of convergence takes a NaN for large: where all functions are NaN, x counts as solved.
// Broyden: a line search that finds nothing is tried again with a new Jacobian, unless the
// gradient of f is below 1e-8; there f has a minimum that is no root. An evaluation that fails
// at the start comes back as true: look at err.
bool broydn(const Objective& objective, DoubleVector& x, int n, TextBuf& err);
// Newton: a line search that finds nothing ends it, as a solution unless the gradient of f is
// below 1e-8. An evaluation that fails at the start comes back as true: look at err.
bool newt(const Objective& objective, DoubleVector& x, int n, TextBuf& err);

// Goes from xold along p, all the way or back in shorter and shorter steps, until f has fallen
// enough from fold. g is the gradient at xold; p is shortened first to the length stpmax.
// true:  x, its f and its functions fvec are the new point; or err has a message: an evaluation
//        failed, or the curve through the last steps has no minimum.
// false: the step has shrunk to nothing; x is xold, but f and fvec are those of the last trial.
bool lnsrch(const Objective& objective, int n, const DoubleVector& xold, double fold,
            const DoubleVector& g, DoubleVector& p, DoubleVector& x, double& f, double stpmax,
            DoubleVector& fvec, TextBuf& err);

// The Jacobian by differences between x and points 1e-6 of a coordinate away (1e-6 from 0): df is
// it, row by function. fvec has the functions at x. Accuracy: about six figures.
// Failure: an evaluation fails; x keeps that one step.
void forward_jacobian(const Objective& objective, int n, DoubleVector& x, const DoubleVector& fvec,
                      DoubleMatrix& df, TextBuf& err);

}  // namespace quantiverse
