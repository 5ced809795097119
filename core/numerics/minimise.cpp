#include "numerics/minimise.h"

#include <cmath>
#include <utility>

#include "numerics/sign_of.h"

namespace quantiverse {
namespace {

constexpr double kGold = 1.618034;          // a step downhill, over the one before
constexpr double kParabolaLimit = 100.0;    // the farthest parabolic step, likewise
constexpr double kTinyDenominator = 1e-20;  // keeps the parabola's division finite

constexpr double kGoldenSection = 0.381966;
constexpr double kAbsoluteFloor = 1e-10;  // brent's accuracy for a minimum at zero

constexpr double kLineTolerance = 2e-4;
constexpr int kLineIterationLimit = 100;
constexpr int kDirectionSetLimit = 4000;

// False: the evaluation failed, or an error was pending.
bool evaluate(const Objective& objective, double x, double& f, TextBuf& err) {
  objective(&x, &f, err);
  return err.is_empty_text();
}

double golden_step(const Valley& v) { return v.cx + kGold * (v.cx - v.bx); }

// The lowest point of the parabola through the three points.
double parabolic_point(const Valley& v) {
  const double r = (v.bx - v.ax) * (v.fb - v.fc);
  const double q = (v.bx - v.cx) * (v.fb - v.fa);
  const double difference = std::fabs(q - r);
  const double den = difference > kTinyDenominator ? difference : kTinyDenominator;
  return v.bx - ((v.bx - v.cx) * q - (v.bx - v.ax) * r) / (2.0 * sign_of(den, q - r));
}

enum class Step { kFailed, kFound, kGoOn };

// One step beyond c, at which the values still fall: u and fu are the new point, or the valley
// is found on the way to it.
Step step_downhill(const Objective& objective, Valley& v, double& u, double& fu, TextBuf& err) {
  u = parabolic_point(v);
  const double ulim = v.bx + kParabolaLimit * (v.cx - v.bx);
  if ((v.bx - u) * (u - v.cx) > 0.0) {
    if (!evaluate(objective, u, fu, err)) return Step::kFailed;
    if (v.fc > fu) {
      v.ax = v.bx;
      v.bx = u;
      v.fa = v.fb;
      v.fb = fu;
      return Step::kFound;
    }
    if (fu > v.fb) {
      v.cx = u;
      v.fc = fu;
      return Step::kFound;
    }
    u = golden_step(v);
  } else if ((v.cx - u) * (u - ulim) > 0.0) {
    if (!evaluate(objective, u, fu, err)) return Step::kFailed;
    if (!(v.fc > fu)) return Step::kGoOn;
    v.bx = v.cx;
    v.cx = u;
    v.fb = v.fc;
    v.fc = fu;
    u = golden_step(v);
  } else if ((u - ulim) * (ulim - v.cx) >= 0.0) {
    u = ulim;
  } else {
    u = golden_step(v);
  }
  return evaluate(objective, u, fu, err) ? Step::kGoOn : Step::kFailed;
}

// Brent's method: the interval a to b, the three best points x, w, v, the step d and the step e
// before it.
struct Search {
  double a, b;
  double x, w, v;
  double fx, fw, fv;
  double d = 0.0;
  double e = 0.0;

  bool parabolic_step(double xm, double tol1);
  void golden_section_step(double xm);
  void take(double u, double fu);
};

// False: the parabola through the three points gives no step that can be trusted.
bool Search::parabolic_step(double xm, double tol1) {
  const double r = (x - w) * (fx - fv);
  double q = (x - v) * (fx - fw);
  double p = (x - v) * q - (x - w) * r;
  q = 2.0 * (q - r);
  if (q > 0.0) p = -p;
  q = std::fabs(q);
  const double etemp = e;
  e = d;
  if (std::fabs(p) >= std::fabs(0.5 * q * etemp) || p <= q * (a - x) || p >= q * (b - x)) {
    return false;
  }
  d = p / q;
  const double u = x + d;
  const double tol2 = 2.0 * tol1;
  if (u - a < tol2 || b - u < tol2) d = sign_of(tol1, xm - x);
  return true;
}

void Search::golden_section_step(double xm) {
  e = x >= xm ? a - x : b - x;
  d = kGoldenSection * e;
}

// Sorts the new point in. Of equal values the newest wins.
void Search::take(double u, double fu) {
  if (fu <= fx) {
    (u >= x ? a : b) = x;
    v = w;
    w = x;
    x = u;
    fv = fw;
    fw = fx;
    fx = fu;
    return;
  }
  (u < x ? a : b) = u;
  if (fu <= fw || w == x) {
    v = w;
    w = u;
    fv = fw;
    fw = fu;
  } else if (fu <= fv || v == x || v == w) {
    v = u;
    fv = fu;
  }
}

double squared(double x) { return x * x; }

// A pass of the direction set: how much the best of its lines gained, and which that was.
struct Pass {
  double del = 0.0;
  int ibig = 0;  // 0: none gained anything
};

Pass minimise_along_all(LineSearch& line, DoubleVector& p, DoubleMatrix& xi, DoubleVector& xit,
                        double& fret, TextBuf& err) {
  Pass pass;
  const int n = line.line_search_size;
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) xit[j] = xi[j][i];
    const double fptt = fret;
    line_minimise(line, p, xit, fret, err);
    const double gain = std::fabs(fptt - fret);
    if (gain > pass.del) {
      pass.del = gain;
      pass.ibig = i;
    }
  }
  return pass;
}

}  // namespace

bool mnbrak(const Objective& objective, Valley& valley, int max_iterations, TextBuf& err) {
  Valley& v = valley;
  v.cx = v.fa = v.fb = v.fc = 0.0;
  if (!evaluate(objective, v.ax, v.fa, err) || !evaluate(objective, v.bx, v.fb, err)) {
    err.clear_text();
    return false;
  }
  if (v.fb > v.fa) {
    std::swap(v.ax, v.bx);
    std::swap(v.fa, v.fb);
  }
  v.cx = v.bx + kGold * (v.bx - v.ax);
  if (!evaluate(objective, v.cx, v.fc, err)) return false;
  for (int iteration = 1; v.fb > v.fc; ++iteration) {
    if (iteration > max_iterations) {
      err.append_text("ERROR:  Too many iteratiuons in mnbrak()\n");
      return false;
    }
    double u = 0.0;
    double fu = 0.0;
    const Step step = step_downhill(objective, v, u, fu, err);
    if (step == Step::kFound) return true;
    if (step == Step::kFailed) {
      err.clear_text();
      return false;
    }
    v.ax = v.bx;
    v.bx = v.cx;
    v.cx = u;
    v.fa = v.fb;
    v.fb = v.fc;
    v.fc = fu;
  }
  return true;
}

double brent(const Objective& objective, const Valley& valley, double tol, int max_iterations,
             double& xmin, TextBuf& err) {
  const double a = valley.ax < valley.cx ? valley.ax : valley.cx;
  const double b = valley.ax > valley.cx ? valley.ax : valley.cx;
  double f = 0.0;
  if (!evaluate(objective, valley.bx, f, err)) return 0.0;
  Search s{a, b, valley.bx, valley.bx, valley.bx, f, f, f};
  for (int iteration = 1; iteration <= max_iterations; ++iteration) {
    const double xm = 0.5 * (s.a + s.b);
    const double tol1 = tol * std::fabs(s.x) + kAbsoluteFloor;
    const double tol2 = 2.0 * tol1;
    if (std::fabs(s.x - xm) <= tol2 - 0.5 * (s.b - s.a)) {
      xmin = s.x;
      return s.fx;
    }
    if (!(std::fabs(s.e) > tol1) || !s.parabolic_step(xm, tol1)) s.golden_section_step(xm);
    const double u = s.x + (std::fabs(s.d) >= tol1 ? s.d : sign_of(tol1, s.d));
    if (!evaluate(objective, u, f, err)) return 0.0;
    s.take(u, f);
  }
  err.append_text("ERROR:  Too many iterations in brent()\n");
  xmin = s.x;
  return s.fx;
}

LineSearch::LineSearch(const Objective& f, int n)
    : objective(f),
      line_search_size(n),
      line_origin(dvector(1, n)),
      line_direction(dvector(1, n)),
      point(dvector(1, n)) {}

void line_value(LineSearch& line, double t, double& f, TextBuf& err) {
  for (int j = 1; j <= line.line_search_size; ++j) {
    line.point[j] = line.line_direction[j] * t + line.line_origin[j];
  }
  line.objective(&line.point[1], &f, err);
}

void line_minimise(LineSearch& line, DoubleVector& p, DoubleVector& xi, double& fret,
                   TextBuf& err) {
  line.line_origin = p;
  line.line_direction = xi;
  // Captures one reference, so std::function has room for it without allocating.
  const Objective along = [&line](const double* t, double* f, TextBuf& e) {
    line_value(line, *t, *f, e);
  };
  Valley valley{0.0, 1.0};
  double xmin = 0.0;  // stays so where either search fails: no step
  if (mnbrak(along, valley, kLineIterationLimit, err)) {
    fret = brent(along, valley, kLineTolerance, kLineIterationLimit, xmin, err);
  }
  for (int j = 1; j <= line.line_search_size; ++j) {
    xi[j] = xi[j] * xmin;
    p[j] = p[j] + xi[j];
  }
}

void direction_set_minimise(const Objective& objective, DoubleVector& p, DoubleMatrix& xi, int n,
                            double ftol, int& iter, double& fret, TextBuf& err) {
  LineSearch line(objective, n);
  DoubleVector pt = p;
  DoubleVector ptt = dvector(1, n);
  DoubleVector xit = dvector(1, n);
  objective(&p[1], &fret, err);
  for (iter = 1;; ++iter) {
    const double fp = fret;
    const Pass pass = minimise_along_all(line, p, xi, xit, fret, err);
    if (2.0 * std::fabs(fp - fret) <= ftol * (std::fabs(fp) + std::fabs(fret))) return;
    if (iter == kDirectionSetLimit) {
      err.append_text("ERROR:  Too many iterations.\n");
      return;
    }
    for (int j = 1; j <= n; ++j) {
      ptt[j] = 2.0 * p[j] - pt[j];
      xit[j] = p[j] - pt[j];
      pt[j] = p[j];
    }
    double fptt = 0.0;
    objective(&ptt[1], &fptt, err);
    if (!(fp > fptt)) continue;
    const double t = 2.0 * (fp - 2.0 * fret + fptt) * squared(fp - fret - pass.del) -
                     pass.del * squared(fp - fptt);
    if (!(t < 0.0)) continue;
    line_minimise(line, p, xit, fret, err);
    if (pass.ibig == 0) continue;  // after a NaN on the way: no direction is the best one
    for (int j = 1; j <= n; ++j) {
      xi[j][pass.ibig] = xi[j][n];
      xi[j][n] = xit[j];
    }
  }
}

}  // namespace quantiverse
