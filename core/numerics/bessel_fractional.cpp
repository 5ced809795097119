#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "numerics/bessel.h"
#include "numerics/sign_of.h"
#include "text/numbers.h"

// Fractional orders, after Temme and Steed. A first continued fraction (CF1) gives the
// logarithmic derivative of the regular function at order nu; a recurrence takes it down to an
// order xmu near 0 (or near x); there a series for small x, or a second fraction (CF2), gives the
// rest; and the irregular function goes up again. A recurrence downwards that has overflowed
// makes NaN of all that rests on it, so it need not go on.
namespace quantiverse {
namespace {

using std::numbers::pi;

constexpr double kEps = 1e-16;
constexpr double kFpMin = 1e-30;
constexpr int kMaxIt = 10000;
constexpr double kXMin = 2.0;  // below it the series is used
constexpr double kTwoOverPi = 0.6366197723675814;

double away_from_zero(double x) { return std::fabs(x) < kFpMin ? kFpMin : x; }

// x / sin(x), sinh(x) / x and sin(x) / x, with their limit near 0.
double over_sin(double x) { return std::fabs(x) < kEps ? 1.0 : x / std::sin(x); }
double sinh_over(double x) { return std::fabs(x) < kEps ? 1.0 : std::sinh(x) / x; }
double sin_over(double x) { return std::fabs(x) < kEps ? 1.0 : std::sin(x) / x; }

// What every stage reads.
struct Setup {
  Setup(double x_in, double nu_in, std::int32_t steps)
      : x(x_in), nu(nu_in), nl(steps), xmu(nu - nl), xmu2(xmu * xmu), xi(1.0 / x), xi2(2.0 * xi) {}
  double x, nu;
  std::int32_t nl;   // steps of the recurrences in the order
  double xmu, xmu2;  // the order at their lower end
  double xi, xi2;
};

// What Temme's series needs of x and xmu.
struct TemmeStart {
  TemmeStart(const Setup& s, TextBuf& err)
      : x2(0.5 * s.x),
        pimu(pi * s.xmu),
        fact(over_sin(pimu)),
        d(-std::log(x2)),
        e(s.xmu * d),
        fact2(sinh_over(e)) {
    math_func_beschb(s.xmu, gam1, gam2, gampl, gammi, err);
  }
  double x2, pimu, fact, d, e, fact2;
  double gam1 = 0.0;
  double gam2 = 0.0;
  double gampl = 0.0;
  double gammi = 0.0;
};

// A recurrence upwards that only repeats itself from here on.
bool is_settled(double a, double b) {
  return (std::isnan(a) && std::isnan(b)) || (a == b && (a == 0.0 || std::isinf(a)));
}

// --- J and Y ----------------------------------------------------------------------------------

// CF1: h is J' / J at order nu, isign the sign of J there.
bool fraction_j(const Setup& s, double& h, int& isign) {
  isign = 1;
  h = s.nu * s.xi;
  if (h < kFpMin) h = kFpMin;
  double b = s.xi2 * s.nu;
  double d = 0.0;
  double c = h;
  for (int i = 1; i <= kMaxIt; ++i) {
    b = b + s.xi2;
    d = away_from_zero(b - d);
    c = away_from_zero(b - 1.0 / c);
    d = 1.0 / d;
    const double del = c * d;
    h = del * h;
    if (d < 0.0) isign = -isign;
    if (std::fabs(del - 1.0) < kEps) return true;
  }
  return false;
}

// The functions at order xmu, from below 2 and from above, given f = J' / J.
struct AtMu {
  double rjmu, rymu, ry1;
};

bool series_jy(const Setup& s, double f, double w, AtMu& at, TextBuf& err) {
  const TemmeStart t(s, err);
  double ff = 2.0 / pi * t.fact * (t.gam1 * std::cosh(t.e) + t.gam2 * t.fact2 * t.d);
  const double e = std::exp(t.e);
  double p = e / (t.gampl * pi);
  double q = 1.0 / (e * pi * t.gammi);
  const double pimu2 = 0.5 * t.pimu;
  const double fact3 = sin_over(pimu2);
  const double r = pi * pimu2 * fact3 * fact3;
  double c = 1.0;
  const double d = -t.x2 * t.x2;
  double sum = ff + r * q;
  double sum1 = p;
  for (int i = 1; i <= kMaxIt; ++i) {
    ff = (i * ff + p + q) / (i * i - s.xmu2);
    c = c * d / i;
    p = p / (i - s.xmu);
    q = q / (i + s.xmu);
    const double del = c * (ff + r * q);
    sum = sum + del;
    const double del1 = c * p - i * del;
    sum1 = sum1 + del1;
    if (std::fabs(del) < (1.0 + std::fabs(sum)) * kEps) {
      at.rymu = -sum;
      at.ry1 = -sum1 * s.xi2;
      const double rymup = s.xmu * s.xi * at.rymu - at.ry1;
      at.rjmu = w / (rymup - f * at.rymu);
      return true;
    }
  }
  return false;
}

// CF2: p + i q is the logarithmic derivative of J + i Y at order xmu.
bool fraction_jy(const Setup& s, double& p, double& q) {
  double a = 0.25 - s.xmu2;
  p = -0.5 * s.xi;
  q = 1.0;
  const double br = 2.0 * s.x;
  double bi = 2.0;
  double fact = a * s.xi / (p * p + q * q);
  double cr = br + q * fact;
  double ci = bi + p * fact;
  double den = br * br + bi * bi;
  double dr = br / den;
  double di = -bi / den;
  double dlr = cr * dr - ci * di;
  double dli = cr * di + ci * dr;
  double temp = p * dlr - q * dli;
  q = p * dli + q * dlr;
  p = temp;
  for (int i = 2; i <= kMaxIt; ++i) {
    a = a + 2 * (i - 1);
    bi = bi + 2.0;
    dr = a * dr + br;
    di = a * di + bi;
    if (std::fabs(dr) + std::fabs(di) < kFpMin) dr = kFpMin;
    fact = a / (cr * cr + ci * ci);
    cr = br + cr * fact;
    ci = bi - ci * fact;
    if (std::fabs(cr) + std::fabs(ci) < kFpMin) cr = kFpMin;
    den = dr * dr + di * di;
    dr = dr / den;
    di = di / -den;
    dlr = cr * dr - ci * di;
    dli = cr * di + ci * dr;
    temp = p * dlr - q * dli;
    q = p * dli + q * dlr;
    p = temp;
    if (std::fabs(dlr - 1.0) + std::fabs(dli) < kEps) return true;
  }
  return false;
}

bool steed_jy(const Setup& s, double f, double w, double rjl, AtMu& at) {
  double p = 0.0;
  double q = 0.0;
  if (!fraction_jy(s, p, q)) return false;
  const double gam = (p - f) / q;
  at.rjmu = sign_of(std::sqrt(w / ((p - f) * gam + q)), rjl);
  at.rymu = at.rjmu * gam;
  const double rymup = at.rymu * (p + q / gam);
  at.ry1 = s.xmu * s.xi * at.rymu - rymup;
  return true;
}

// --- I and K ----------------------------------------------------------------------------------

// CF1: h is I' / I at order nu.
bool fraction_i(const Setup& s, double& h) {
  h = s.nu * s.xi;
  if (h < kFpMin) h = kFpMin;
  double b = s.xi2 * s.nu;
  double d = 0.0;
  double c = h;
  for (int i = 1; i <= kMaxIt; ++i) {
    b = b + s.xi2;
    d = 1.0 / (b + d);
    c = b + 1.0 / c;
    const double del = c * d;
    h = del * h;
    if (std::fabs(del - 1.0) < kEps) return true;
  }
  return false;
}

bool series_k(const Setup& s, double& rkmu, double& rk1, TextBuf& err) {
  const TemmeStart t(s, err);
  double ff = t.fact * (t.gam1 * std::cosh(t.e) + t.gam2 * t.fact2 * t.d);
  double sum = ff;
  const double e = std::exp(t.e);
  double p = 0.5 * e / t.gampl;
  double q = 0.5 / (e * t.gammi);
  double c = 1.0;
  const double d = t.x2 * t.x2;
  double sum1 = p;
  for (int i = 1; i <= kMaxIt; ++i) {
    ff = (i * ff + p + q) / (i * i - s.xmu2);
    c = c * d / i;
    p = p / (i - s.xmu);
    q = q / (i + s.xmu);
    const double del = c * ff;
    sum = sum + del;
    const double del1 = c * (p - i * ff);
    sum1 = sum1 + del1;
    if (std::fabs(del) < std::fabs(sum) * kEps) {
      rkmu = sum;
      rk1 = sum1 * s.xi2;
      return true;
    }
  }
  return false;
}

// CF2, with the sum that gives K its size.
bool steed_k(const Setup& s, double& rkmu, double& rk1) {
  double b = 2.0 * (1.0 + s.x);
  double d = 1.0 / b;
  double delh = d;
  double h = d;
  double q1 = 0.0;
  double q2 = 1.0;
  const double a1 = 0.25 - s.xmu2;
  double c = a1;
  double q = a1;
  double a = -a1;
  double sum = 1.0 + q * delh;
  for (int i = 2; i <= kMaxIt; ++i) {
    a = a - 2 * (i - 1);
    c = -a * c / i;
    const double qnew = (q1 - b * q2) / a;
    q1 = q2;
    q2 = qnew;
    q = q + c * qnew;
    b = b + 2.0;
    d = 1.0 / (b + a * d);
    delh = (b * d - 1.0) * delh;
    h = h + delh;
    const double dels = q * delh;
    sum = sum + dels;
    if (std::fabs(dels / sum) < kEps) {
      h = a1 * h;
      rkmu = std::sqrt(pi / (2.0 * s.x)) * std::exp(-s.x) / sum;
      rk1 = rkmu * (s.xmu + s.x + 0.5 - h) * s.xi;
      return true;
    }
  }
  return false;
}

// The functions alone, of order |nu|, by one of the two routines below.
struct Values {
  double regular = 0.0;
  double irregular = 0.0;
};

Values values(decltype(math_func_bessik)& routine, double nu, double x, TextBuf& err) {
  Values v;
  double rp = 0.0;
  double ip = 0.0;
  routine(x, std::fabs(nu), v.regular, v.irregular, rp, ip, err);
  return v;
}

}  // namespace

void math_func_bessjy(double x, double nu, double& rj, double& ry, double& rjp, double& ryp,
                      TextBuf& err) {
  rj = ry = rjp = ryp = 0.0;
  if (x <= 0.0) return err.append_text("ERROR:   x must be > 0 in math_func_bessjy().\n");
  if (nu < 0.0) return err.append_text("ERROR:   nu must be >= 0 in math_func_bessjy().\n");
  const Setup s(
      x, nu,
      x < kXMin ? truncate_to_int32(nu + 0.5) : std::max(0, truncate_to_int32(nu - x + 1.5)));
  const double w = s.xi2 / pi;

  double h = 0.0;
  int isign = 1;
  if (!fraction_j(s, h, isign)) {
    return err.append_text("ERROR: x too large in math_func_bessjy(); try asymptotic expansion.\n");
  }
  double rjl = isign * kFpMin;
  double rjpl = h * rjl;
  const double rjl1 = rjl;
  const double rjp1 = rjpl;
  double fact = nu * s.xi;
  for (std::int32_t l = s.nl; l > 0 && std::isfinite(rjl); --l) {
    const double rjtemp = fact * rjl + rjpl;
    fact = fact - s.xi;
    rjpl = fact * rjtemp - rjl;
    rjl = rjtemp;
  }
  if (rjl == 0.0) rjl = kEps;
  const double f = rjpl / rjl;

  AtMu at{};
  if (x < kXMin) {
    if (!series_jy(s, f, w, at, err)) {
      return err.append_text("ERROR: series failed to converge in math_func_bessjy().\n");
    }
  } else if (!steed_jy(s, f, w, rjl, at)) {
    return err.append_text("ERROR: cf2 failed to converge in math_func_bessjy().\n");
  }

  fact = at.rjmu / rjl;
  rj = rjl1 * fact;
  rjp = rjp1 * fact;
  for (std::int32_t i = 0; i < s.nl && !(std::isnan(at.rymu) && std::isnan(at.ry1)); ++i) {
    const double rytemp = (s.xmu + (i + 1)) * s.xi2 * at.ry1 - at.rymu;
    at.rymu = at.ry1;
    at.ry1 = rytemp;
  }
  ry = at.rymu;
  ryp = nu * s.xi * at.rymu - at.ry1;
}

void math_func_bessik(double x, double nu, double& ri, double& rk, double& rip, double& rkp,
                      TextBuf& err) {
  ri = rk = rip = rkp = 0.0;
  if (x <= 0.0) return err.append_text("ERROR:   x must be > 0 in math_func_bessik().\n");
  if (nu < 0.0) return err.append_text("ERROR:   nu must be >= 0 in math_func_bessik().\n");
  const Setup s(x, nu, truncate_to_int32(nu + 0.5));

  double h = 0.0;
  if (!fraction_i(s, h)) {
    return err.append_text("ERROR: x too large in math_func_bessik(); try asymptotic expansion.\n");
  }
  double ril = kFpMin;
  double ripl = h * ril;
  const double ril1 = ril;
  const double rip1 = ripl;
  double fact = nu * s.xi;
  for (std::int32_t l = s.nl; l > 0 && std::isfinite(ril); --l) {
    const double ritemp = fact * ril + ripl;
    fact = fact - s.xi;
    ripl = fact * ritemp + ril;
    ril = ritemp;
  }
  const double f = ripl / ril;

  double rkmu = 0.0;
  double rk1 = 0.0;
  if (x < kXMin) {
    if (!series_k(s, rkmu, rk1, err)) {
      return err.append_text("ERROR: series failed to converge in math_func_bessik().\n");
    }
  } else if (!steed_k(s, rkmu, rk1)) {
    return err.append_text("ERROR: cf2 failed to converge in math_func_bessik().\n");
  }

  const double rkmup = s.xmu * s.xi * rkmu - rk1;
  const double rimu = s.xi / (f * rkmu - rkmup);
  ri = rimu * ril1 / ril;
  rip = rimu * rip1 / ril;
  for (std::int32_t i = 0; i < s.nl && !is_settled(rkmu, rk1); ++i) {
    const double rktemp = (s.xmu + (i + 1)) * s.xi2 * rk1 + rkmu;
    rkmu = rk1;
    rk1 = rktemp;
  }
  rk = rkmu;
  rkp = nu * s.xi * rkmu - rk1;
}

double math_func_bessi_frac(double nu, double x, TextBuf& err) {
  const auto [ri, rk] = values(math_func_bessik, nu, x, err);
  return nu < 0.0 ? ri + std::sin(-nu * pi) * kTwoOverPi * rk : ri;
}

double math_func_bessj_frac(double nu, double x, TextBuf& err) {
  const auto [rj, ry] = values(math_func_bessjy, nu, x, err);
  return nu < 0.0 ? std::cos(-nu * pi) * rj - std::sin(-nu * pi) * ry : rj;
}

double math_func_bessk_frac(double nu, double x, TextBuf& err) {
  return values(math_func_bessik, nu, x, err).irregular;
}

double math_func_bessy_frac(double nu, double x, TextBuf& err) {
  const auto [rj, ry] = values(math_func_bessjy, nu, x, err);
  return nu < 0.0 ? std::sin(-nu * pi) * rj + std::cos(-nu * pi) * ry : ry;
}

}  // namespace quantiverse
