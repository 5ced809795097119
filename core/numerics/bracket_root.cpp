#include "numerics/bracket_root.h"

#include <cmath>

#include "numerics/sign_of.h"

namespace quantiverse {
namespace {

// A mid-point this many times as far from zero as either end is taken for a pole.
constexpr double kPoleRatio = 1.5;
constexpr int kRidderIterationLimit = 600;
// Stands for "no answer yet": no first step comes near it.
constexpr double kNoAnswer = -1.11e30;

double evaluate(const Objective& objective, double x, TextBuf& err) {
  double f = 0.0;
  objective(&x, &f, err);
  return f;
}

// A search in one direction: where it is, and the point before.
struct Side {
  double x;
  double f;
  double previous_x;
  double previous_f;
  bool alive = true;
};

void advance(const Objective& objective, double step, Side& side, TextBuf& err) {
  if (!side.alive) return;
  side.previous_x = side.x;
  side.previous_f = side.f;
  side.x += step;
  side.f = evaluate(objective, side.x, err);
  if (err.is_empty_text()) return;
  side.alive = false;
  err.clear_text();
}

bool take_sign_change(const Side& side, Bracket& bracket) {
  if (!side.alive || !(side.previous_f * side.f <= 0.0)) return false;
  bracket.x1 = side.previous_x;
  bracket.f1 = side.previous_f;
  bracket.x2 = side.x;
  bracket.f2 = side.f;
  return true;
}

// Sets the ends of the bracket, or leaves a message.
bool find_sign_change(const Objective& objective, double x0, double f0, double dx, int max_it,
                      double factor, Bracket& bracket, TextBuf& err) {
  Side left{x0, f0, x0, f0};
  Side right{x0, f0, x0, f0};
  advance(objective, -dx, left, err);
  advance(objective, dx, right, err);
  if (!left.alive && !right.alive) {
    err.append_text("Cannot evaluate bracketing points (1)");
    return false;
  }
  for (int iteration = 1; iteration <= max_it; ++iteration) {
    if (take_sign_change(left, bracket) || take_sign_change(right, bracket)) return true;
    dx = dx * factor;
    advance(objective, -dx, left, err);
    advance(objective, dx, right, err);
    if (!left.alive && !right.alive) {
      err.append_text("Cannot evaluate bracketing points (2)");
      return false;
    }
  }
  err.append_text("ERROR:  Max_it reached w/o sign change in bi_bracket_zero()\n");
  return false;
}

// The narrower bracket of Ridders' method.
struct Interval {
  double xl;
  double fl;
  double xh;
  double fh;
  double xm;
  double fm;
};

// Two points of opposite sign, one of which is the new one. False: there are none, which takes
// three values of one sign, let in by a product that vanished.
bool narrow(double x, double f, Interval& in) {
  if (sign_of(in.fm, f) != in.fm) {
    in.xl = in.xm;
    in.fl = in.fm;
    in.xh = x;
    in.fh = f;
  } else if (sign_of(in.fl, f) != in.fl) {
    in.xh = x;
    in.fh = f;
  } else if (sign_of(in.fh, f) != in.fh) {
    in.xl = x;
    in.fl = f;
  } else {
    return false;
  }
  return true;
}

// Ridders' iteration. False: the search failed and there is no answer, not even a bad one.
bool find_root(const Objective& objective, Interval in, double xacc, double& ans, TextBuf& err) {
  for (int j = 1; j <= kRidderIterationLimit; ++j) {
    const double s = std::sqrt(in.fm * in.fm - in.fl * in.fh);
    if (s == 0.0) return true;
    const double sg = in.fl > in.fh ? 1.0 : -1.0;
    const double xnew = in.xm + (in.xm - in.xl) * (sg * in.fm / s);
    if (std::fabs(xnew - ans) <= xacc) return true;
    ans = xnew;
    const double fnew = evaluate(objective, ans, err);
    if (!err.is_empty_text()) return false;
    if (fnew == 0.0) return true;
    if (!narrow(ans, fnew, in)) {
      err.append_text("ERROR:  Never get here in zriddr()\n");
      return false;
    }
    if (std::fabs(in.xh - in.xl) <= xacc) return true;
    in.xm = (in.xl + in.xh) * 0.5;
    in.fm = evaluate(objective, in.xm, err);
    if (!err.is_empty_text()) return false;
  }
  err.append_text("ERROR:  Maximum iterations reached in zriddr()\n");
  return true;
}

}  // namespace

bool bi_bracket_zero(const Objective& objective, double x0, double dx, int max_it, double factor,
                     Bracket& bracket, TextBuf& err) {
  bracket = Bracket{};
  const double f0 = evaluate(objective, x0, err);
  if (!err.is_empty_text()) return false;
  if (f0 == 0.0) {
    bracket.x1 = x0;
    bracket.f1 = f0;
    bracket.x2 = bracket.x1 + 1.0;
    bracket.xm = (bracket.x1 + bracket.x2) * 0.5;
    bracket.f2 = f0 + 0.5;
    return true;
  }
  if (!find_sign_change(objective, x0, f0, dx, max_it, factor, bracket, err)) return false;
  bracket.xm = (bracket.x1 + bracket.x2) * 0.5;
  bracket.fm = evaluate(objective, bracket.xm, err);
  if (!err.is_empty_text()) return false;
  const double fm = std::fabs(bracket.fm);
  if (fm > kPoleRatio * std::fabs(bracket.f1) && fm > kPoleRatio * std::fabs(bracket.f2)) {
    err.append_text("ERROR:  Possible singularity in bi_bracket_zero()\n");
    return false;
  }
  return true;
}

double zriddr(const Objective& objective, const Bracket& bracket, double xacc, TextBuf& err) {
  if (bracket.f1 == 0.0) return bracket.x1;
  if (bracket.f2 == 0.0) return bracket.x2;
  if (bracket.fm == 0.0) return bracket.xm;
  if (bracket.f1 * bracket.f2 > 0.0) {
    err.append_text("ERROR:  Root must be bracketed in zriddr()\n");
    return 0.0;
  }
  double ans = kNoAnswer;
  const Interval in{bracket.x1, bracket.f1, bracket.x2, bracket.f2, bracket.xm, bracket.fm};
  if (!find_root(objective, in, xacc, ans, err)) return 0.0;
  const double residual = std::fabs(evaluate(objective, ans, err));
  if (residual > std::fabs(bracket.f1) && residual > std::fabs(bracket.f2) &&
      residual > std::fabs(bracket.fm)) {
    err.append_text("ERROR:  Singularity detected in zriddr()\n");
  }
  return ans;
}

}  // namespace quantiverse
