#include "numerics/multiroot.h"

#include <cmath>

#include "numerics/factorise.h"

namespace quantiverse {
namespace {

constexpr int kIterationLimit = 200;
constexpr double kFunctionTolerance = 1e-6;
constexpr double kStartTolerance = 1e-8;
constexpr double kStepTolerance = 1e-7;
constexpr double kGradientTolerance = 1e-8;
constexpr double kStepLimitFactor = 100.0;

constexpr double kSufficientDecrease = 0.0001;
constexpr double kDifferenceStep = 1e-6;
// A change of a function below this fraction of it is noise, and teaches Broyden nothing.
constexpr double kNoise = 1e-7;

// Where a is a NaN, b.
double greater_of(double a, double b) { return a > b ? a : b; }

double sum_of_squares(const DoubleVector& v, int n) {
  double sum = 0.0;
  for (int i = 1; i <= n; ++i) sum += v[i] * v[i];
  return sum;
}

// What the solvers make as small as they can.
double merit(const DoubleVector& fvec, int n) { return 0.5 * sum_of_squares(fvec, n); }

double step_limit(const DoubleVector& x, int n) {
  return kStepLimitFactor * greater_of(std::sqrt(sum_of_squares(x, n)), n);
}

// The measures for the tests of convergence. A NaN among the numbers is never the largest.

double largest_magnitude(const DoubleVector& v, int n) {
  double test = 0.0;
  for (int i = 1; i <= n; ++i) test = greater_of(std::fabs(v[i]), test);
  return test;
}

double largest_change(const DoubleVector& x, const DoubleVector& xold, int n) {
  double test = 0.0;
  for (int i = 1; i <= n; ++i) {
    const double temp = std::fabs(x[i] - xold[i]) / greater_of(std::fabs(x[i]), 1.0);
    test = greater_of(temp, test);
  }
  return test;
}

double largest_gradient(const DoubleVector& g, const DoubleVector& x, double f, int n) {
  const double den = greater_of(f, 0.5 * n);
  double test = 0.0;
  for (int i = 1; i <= n; ++i) {
    const double temp = std::fabs(g[i]) * greater_of(std::fabs(x[i]), 1.0) / den;
    test = greater_of(temp, test);
  }
  return test;
}

// A trial step of the line search, as a part of p, and f there.
struct Trial {
  double alam = 0.0;
  double f = 0.0;
};

// Where the cubic through f and its slope at xold and the last two trials is least, at most half
// of the last step. Without such a place err has a message.
double cubic_step(const Trial& last, const Trial& before, double fold, double slope, TextBuf& err) {
  const double alam = last.alam;
  const double alam2 = before.alam;
  const double rhs1 = last.f - fold - alam * slope;
  const double rhs2 = before.f - fold - alam2 * slope;
  const double a = (rhs1 / (alam * alam) - rhs2 / (alam2 * alam2)) / (alam - alam2);
  const double b = (-alam2 * rhs1 / (alam * alam) + alam * rhs2 / (alam2 * alam2)) / (alam - alam2);
  double tmplam = 0.0;
  if (a == 0.0) {
    tmplam = -slope / (2.0 * b);
  } else {
    const double disc = b * b - 3.0 * a * slope;
    if (disc < 0.0) {
      err.append_text("ERROR:  Roundoff problem in lnsrch.\n");
      return 0.0;
    }
    tmplam = (-b + std::sqrt(disc)) / (3.0 * a);
  }
  return tmplam > 0.5 * alam ? 0.5 * alam : tmplam;
}

// The work space of broydn.
struct Broyden {
  explicit Broyden(int size);

  bool build(const Objective& objective, DoubleVector& x, TextBuf& err);
  bool update(const DoubleVector& x, TextBuf& err);
  void find_direction();

  int n;
  DoubleVector c, d;
  DoubleVector fvec, fvcold, xold;
  DoubleVector g, p;
  DoubleVector s, t, w;
  DoubleMatrix qt, r;
};

Broyden::Broyden(int size)
    : n(size),
      c(dvector(1, n)),
      d(dvector(1, n)),
      fvec(dvector(1, n)),
      fvcold(dvector(1, n)),
      xold(dvector(1, n)),
      g(dvector(1, n)),
      p(dvector(1, n)),
      s(dvector(1, n)),
      t(dvector(1, n)),
      w(dvector(1, n)),
      qt(dmatrix(1, n, 1, n)),
      r(dmatrix(1, n, 1, n)) {}

// Factors a new Jacobian at x. False: err has a message.
bool Broyden::build(const Objective& objective, DoubleVector& x, TextBuf& err) {
  forward_jacobian(objective, n, x, fvec, r, err);
  if (!err.is_empty_text()) return false;
  if (qr_decompose(r, n, c, d)) {
    err.append_text("ERROR:  Singular Jacobian in brodyn.\n");
    return false;
  }
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) qt[i][j] = i == j ? 1.0 : 0.0;
  }
  for (int k = 1; k < n; ++k) {
    if (c[k] == 0.0) continue;
    for (int j = 1; j <= n; ++j) {
      double sum = 0.0;
      for (int i = k; i <= n; ++i) sum += r[i][k] * qt[i][j];
      sum /= c[k];
      for (int i = k; i <= n; ++i) qt[i][j] = qt[i][j] - sum * r[i][k];
    }
  }
  for (int i = 1; i <= n; ++i) {
    r[i][i] = d[i];
    for (int j = 1; j < i; ++j) r[i][j] = 0.0;
  }
  return true;
}

// Corrects the factors by what the step from xold to x did to the functions. False: err has a
// message.
bool Broyden::update(const DoubleVector& x, TextBuf& err) {
  for (int i = 1; i <= n; ++i) s[i] = x[i] - xold[i];
  for (int i = 1; i <= n; ++i) {
    double sum = 0.0;
    for (int j = i; j <= n; ++j) sum += r[i][j] * s[j];
    t[i] = sum;
  }
  bool skip = true;
  for (int i = 1; i <= n; ++i) {
    double sum = 0.0;
    for (int j = 1; j <= n; ++j) sum += qt[j][i] * t[j];
    w[i] = fvec[i] - fvcold[i] - sum;
    if (std::fabs(w[i]) >= kNoise * (std::fabs(fvec[i]) + std::fabs(fvcold[i]))) {
      skip = false;
    } else {
      w[i] = 0.0;
    }
  }
  if (skip) return true;
  for (int i = 1; i <= n; ++i) {
    double sum = 0.0;
    for (int j = 1; j <= n; ++j) sum += qt[i][j] * w[j];
    t[i] = sum;
  }
  const double den = sum_of_squares(s, n);
  for (int i = 1; i <= n; ++i) s[i] = s[i] / den;
  qr_update(r, qt, n, t, s);
  for (int i = 1; i <= n; ++i) {
    if (r[i][i] == 0.0) {
      err.append_text("ERROR:  r singular in broydn.\n");
      return false;
    }
    d[i] = r[i][i];
  }
  return true;
}

// The gradient of f, and the step to where the linear model has its root.
void Broyden::find_direction() {
  for (int i = 1; i <= n; ++i) {
    double sum = 0.0;
    for (int j = 1; j <= n; ++j) sum += qt[i][j] * fvec[j];
    g[i] = sum;
    p[i] = -sum;
  }
  for (int i = n; i >= 1; --i) {
    double sum = 0.0;
    for (int j = 1; j <= i; ++j) sum += r[j][i] * g[j];
    g[i] = sum;
  }
  r_back_substitute(r, n, d, p);
}

}  // namespace

bool lnsrch(const Objective& objective, int n, const DoubleVector& xold, double fold,
            const DoubleVector& g, DoubleVector& p, DoubleVector& x, double& f, double stpmax,
            DoubleVector& fvec, TextBuf& err) {
  const double len = std::sqrt(sum_of_squares(p, n));
  if (len > stpmax) {
    for (int i = 1; i <= n; ++i) p[i] = p[i] * (stpmax / len);
  }
  double slope = 0.0;
  for (int i = 1; i <= n; ++i) slope += g[i] * p[i];
  double test = 0.0;
  for (int i = 1; i <= n; ++i) {
    test = greater_of(std::fabs(p[i]) / greater_of(std::fabs(xold[i]), 1.0), test);
  }
  const double alamin = kStepTolerance / test;
  double alam = 1.0;
  Trial before;
  // The first trial is told by its count. A rising slope can send a later one back to the same
  // full step, which by its length would be taken for the first and go round for ever.
  for (bool first = true;; first = false) {
    for (int i = 1; i <= n; ++i) x[i] = xold[i] + alam * p[i];
    objective(&x[1], &fvec[1], err);
    if (!err.is_empty_text()) return true;
    f = merit(fvec, n);
    if (alamin > alam || alam == 0.0) {  // 0: an infinite or NaN step has no alamin to reach
      x = xold;
      return false;
    }
    if (f <= fold + kSufficientDecrease * alam * slope) return true;
    const Trial last{alam, f};
    const double tmplam =
        first ? -slope / (2.0 * (f - fold - slope)) : cubic_step(last, before, fold, slope, err);
    if (!err.is_empty_text()) return true;
    before = last;
    alam = greater_of(tmplam, 0.1 * alam);
  }
}

void forward_jacobian(const Objective& objective, int n, DoubleVector& x, const DoubleVector& fvec,
                      DoubleMatrix& df, TextBuf& err) {
  DoubleVector work = dvector(1, n);
  for (int j = 1; j <= n; ++j) {
    const double temp = x[j];
    double h = kDifferenceStep * std::fabs(temp);
    if (h == 0.0) h = kDifferenceStep;
    x[j] = temp + h;
    h = x[j] - temp;  // the step as it came out, so that its rounding does no harm
    objective(&x[1], &work[1], err);
    if (!err.is_empty_text()) return;
    x[j] = temp;
    for (int i = 1; i <= n; ++i) df[i][j] = (work[i] - fvec[i]) / h;
  }
}

bool newt(const Objective& objective, DoubleVector& x, int n, TextBuf& err) {
  IntVector indx = ivector(1, n);
  DoubleMatrix fjac = dmatrix(1, n, 1, n);
  DoubleVector g = dvector(1, n);
  DoubleVector p = dvector(1, n);
  DoubleVector xold = dvector(1, n);
  DoubleVector fvec = dvector(1, n);
  objective(&x[1], &fvec[1], err);
  if (!err.is_empty_text()) return true;
  double f = merit(fvec, n);
  if (largest_magnitude(fvec, n) < kStartTolerance) return true;
  const double stpmax = step_limit(x, n);
  for (int iteration = 1; iteration <= kIterationLimit; ++iteration) {
    forward_jacobian(objective, n, x, fvec, fjac, err);
    if (!err.is_empty_text()) return false;
    for (int i = 1; i <= n; ++i) {
      double sum = 0.0;
      for (int j = 1; j <= n; ++j) sum += fjac[j][i] * fvec[j];
      g[i] = sum;
      p[i] = -fvec[i];
    }
    xold = x;
    double d = 0.0;
    ludcmp(fjac, n, indx, d, err);
    if (!err.is_empty_text()) return false;
    lu_back_substitute(fjac, n, indx, p);
    const bool check = lnsrch(objective, n, xold, f, g, p, x, f, stpmax, fvec, err);
    if (!err.is_empty_text()) return false;
    if (largest_magnitude(fvec, n) < kFunctionTolerance) return true;
    if (!check) return !(largest_gradient(g, x, f, n) < kGradientTolerance);
    if (largest_change(x, xold, n) < kStepTolerance) return true;
  }
  err.append_text("ERROR:  MAXITS exceeded in newt\n");
  return false;
}

bool broydn(const Objective& objective, DoubleVector& x, int n, TextBuf& err) {
  Broyden b(n);
  objective(&x[1], &b.fvec[1], err);
  double f = merit(b.fvec, n);
  if (largest_magnitude(b.fvec, n) < kStartTolerance) return true;
  const double stpmax = step_limit(x, n);
  bool restart = true;
  for (int iteration = 1; iteration <= kIterationLimit; ++iteration) {
    if (!(restart ? b.build(objective, x, err) : b.update(x, err))) return false;
    b.find_direction();
    b.xold = x;
    b.fvcold = b.fvec;
    const bool check = lnsrch(objective, n, b.xold, f, b.g, b.p, x, f, stpmax, b.fvec, err);
    if (!err.is_empty_text()) return false;
    if (largest_magnitude(b.fvec, n) < kFunctionTolerance) return true;
    if (check) {
      restart = false;
      if (largest_change(x, b.xold, n) < kStepTolerance) return true;
    } else {
      if (restart || largest_gradient(b.g, x, f, n) < kGradientTolerance) return false;
      restart = true;
    }
  }
  err.append_text("ERROR:  MAXITS exceeded in broydn.\n");
  return false;
}

}  // namespace quantiverse
