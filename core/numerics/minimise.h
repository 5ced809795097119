#pragma once

#include "numerics/objective.h"
#include "text/text_buf.h"
#include "text/vectors.h"

// Local minima: of one variable by bracketing and Brent's method, of several by Powell's method
// of direction sets. Vectors and matrices count from 1. The objective gives one number and keeps
// the last point that it was evaluated at, which is a trial point near the minimum, seldom the
// minimum itself; so the points and their order are part of the contract.
namespace quantiverse {

// A point b with no greater value than a and c, which lie on either side of it.
struct Valley {
  double ax = 0.0;
  double bx = 0.0;
  double cx = 0.0;
  double fa = 0.0;
  double fb = 0.0;
  double fc = 0.0;
};

// Walks downhill from the points ax and bx in golden or parabolic steps until the values rise.
// true:  `valley` is complete.
// false: no rise within max_iterations steps, or no value. Only the limit, and a third point
//        without a value, leave a message: at any other point that fails, err is cleared.
bool mnbrak(const Objective& objective, Valley& valley, int max_iterations, TextBuf& err);

// The least value found in the valley; xmin is where.
// Accuracy of xmin: tol times its size, plus 1e-10. A tol below the square root of the machine's
// precision, about 1.5e-8, gains nothing.
// Failure: no convergence within max_iterations; the best point so far. An evaluation fails; 0,
// and xmin is left alone.
double brent(const Objective& objective, const Valley& valley, double tol, int max_iterations,
             double& xmin, TextBuf& err);

// A line through a space of n variables, and the function along it. Made once for many lines.
struct LineSearch {
  LineSearch(const Objective& f, int n);

  const Objective& objective;
  int line_search_size;
  DoubleVector line_origin;
  DoubleVector line_direction;
  DoubleVector point;  // scratch: the point that is evaluated
};

// The function at line_origin + t * line_direction.
void line_value(LineSearch& line, double t, double& f, TextBuf& err);

// Moves p to the minimum from p along the direction xi, within 2e-4 of the step. xi becomes the
// step taken, fret the value.
// Failure: without a valley p and fret stay, and xi is zero; what mnbrak says of err holds. With
// a valley in which an evaluation fails p stays, xi is zero, and so is fret; err has the message.
void line_minimise(LineSearch& line, DoubleVector& p, DoubleVector& xi, double& fret, TextBuf& err);

// Moves p to a local minimum; fret is the value there, iter the passes made. The columns of xi
// are the n directions to begin with, and change.
// Accuracy: the last pass lowered the value by no more than the fraction ftol of it. Nothing is
// allowed for a value of zero, which ends only when a pass gains nothing at all. At most 4000
// passes.
// Failure: the limit; p as it stands. err isn't looked at in between, so what a line search left
// there is there at the end, unless a later one cleared it.
void direction_set_minimise(const Objective& objective, DoubleVector& p, DoubleMatrix& xi, int n,
                            double ftol, int& iter, double& fret, TextBuf& err);

}  // namespace quantiverse
