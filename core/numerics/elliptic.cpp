#include "numerics/elliptic.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace quantiverse {
namespace {

// Where the duplication may stop: the greatest relative deviation from the mean that the series
// behind it still makes good. Its error is of the sixth order in the deviation.
constexpr double kStopRc = 0.0012;
constexpr double kStopRd = 0.0015;
constexpr double kStopRf = 0.0025;
constexpr double kStopRj = 0.0015;

// Coefficients of the series in the deviations.
constexpr double kOneThird = 0.3333333333333333;
constexpr double kOneSixth = 0.16666666666666666;
constexpr double kOneSeventh = 0.14285714285714285;
constexpr double k1Over14 = 0.07142857142857142;
constexpr double k1Over24 = 0.041666666666666664;
constexpr double k3Over11 = 0.2727272727272727;
constexpr double k3Over14 = 0.21428571428571427;
constexpr double k3Over22 = 0.13636363636363635;
constexpr double k3Over26 = 0.11538461538461539;
constexpr double k3Over44 = 0.06818181818181818;
constexpr double k9Over22 = 0.4090909090909091;
constexpr double k9Over52 = 0.17307692307692307;
constexpr double k9Over88Rd = 0.10227272727272728;  // one unit in the last place above its twin
constexpr double k9Over88Rj = 0.10227272727272727;

constexpr double kStopLanden = 0.0003;
constexpr int kMostLandenStages = 13;

double square(double x) { return x * x; }

// Three numbers on their way to a common value.
struct Triple {
  double x, y, z;
};

// The roots of a round of duplication, and what every argument of the round is moved by.
struct Round {
  explicit Round(const Triple& t)
      : sqrtx(std::sqrt(t.x)),
        sqrty(std::sqrt(t.y)),
        sqrtz(std::sqrt(t.z)),
        alamb(sqrtx * (sqrty + sqrtz) + sqrty * sqrtz) {}
  double sqrtx, sqrty, sqrtz;
  double alamb;
};

void duplicate(Triple& t, double alamb) {
  t.x = 0.25 * (t.x + alamb);
  t.y = 0.25 * (t.y + alamb);
  t.z = 0.25 * (t.z + alamb);
}

Triple deviations(const Triple& t, double ave) {
  return {(ave - t.x) / ave, (ave - t.y) / ave, (ave - t.z) / ave};
}

double greatest_magnitude(const Triple& t) {
  return std::max(std::max(std::fabs(t.x), std::fabs(t.y)), std::fabs(t.z));
}

// The first test of the arguments that fails, or nullptr. The order is behaviour.
const char* refusal_rc(double x, double y) {
  const double size = x + std::fabs(y);
  if (x < 0.0) return "ERROR:  x must be >= 0 in routine math_func_carlsons_rc().\n";
  if (y == 0.0) return "ERROR:  y cannot be zero in routine math_func_carlsons_rc().\n";
  if (size < 1.69e-38) {
    return "ERROR:  x + fabs(y) too small in routine math_func_carlsons_rc().\n";
  }
  if (size > 3e37) return "ERROR:  x + fabs(y) too big in routine math_func_carlsons_rc().\n";
  if (y < -1.72e19 && x > 0.0 && x < 0.010281960000000001) {
    return "ERROR:  bad arg range in routine math_func_carlsons_rc().\n";
  }
  return nullptr;
}

const char* refusal_rd(double x, double y, double z) {
  if (std::min(x, y) < 0.0) {
    return "ERROR:  x or y must be >= 0 in routine math_func_carlsons_rd().\n";
  }
  if (std::min(x + y, z) < 1e-25) {
    return "ERROR:  x + y or z too small in routine math_func_carlsons_rd().\n";
  }
  if (std::max({x, y, z}) > 4.5e21) {
    return "ERROR:  x, y, z too big in routine math_func_carlsons_rd().\n";
  }
  return nullptr;
}

const char* refusal_rf(double x, double y, double z) {
  if (std::min({x, y, z}) < 0.0) {
    return "ERROR:  x, y, and z  >= 0 in routine math_func_carlsons_rf().\n";
  }
  if (std::min({x + y, x + z, y + z}) < 1.5e-38) {
    return "ERROR:  x or y or z too small in routine math_func_carlsons_rf().\n";
  }
  if (std::max({x, y, z}) > 3e37) {
    return "ERROR:  x or y or z too big in routine math_func_carlsons_rf().\n";
  }
  return nullptr;
}

// x has no part in the tests of size, and y only in the first.
const char* refusal_rj(double x, double y, double z, double p) {
  if (std::min({x, y, z}) < 0.0) {
    return "ERROR:  x, y, and z must be >= 0 in routine math_func_carlsons_rj().\n";
  }
  if (std::min(y + z, std::fabs(p)) < 2.5e-13 || std::max(z, std::fabs(p)) > 9e11) {
    return "ERROR:  arg error in routine math_func_carlsons_rj().\n";
  }
  return nullptr;
}

// The sum of math_func_carlsons_rj; `t` and `pt` end as the last round leaves them.
double sum_rj(Triple& t, double& pt, TextBuf& err) {
  double sum = 0.0;
  double fac = 1.0;
  double ave = 0.0;
  double delp = 0.0;
  Triple del{};
  // The deviations of x and y have no say in when to stop.
  do {
    const Round r(t);
    const double alpha = square(pt * (r.sqrtx + r.sqrty + r.sqrtz) + r.sqrtx * r.sqrty * r.sqrtz);
    const double beta = pt * square(pt + r.alamb);
    sum = sum + fac * math_func_carlsons_rc(alpha, beta, err);
    fac = 0.25 * fac;
    duplicate(t, r.alamb);
    pt = 0.25 * (pt + r.alamb);
    ave = 0.2 * (t.x + t.y + t.z + pt + pt);
    del = deviations(t, ave);
    delp = (ave - pt) / ave;
  } while (std::max(std::fabs(del.z), std::fabs(delp)) > kStopRj);
  const double ea = del.x * (del.y + del.z) + del.y * del.z;
  const double eb = del.x * del.y * del.z;
  const double ec = delp * delp;
  const double ed = ea - 3.0 * ec;
  const double ee = eb + 2.0 * delp * (ea - ec);
  return 3.0 * sum + fac *
                         (1.0 + ed * (-k3Over14 + k9Over88Rj * ed - k9Over52 * ee) +
                          eb * (kOneSixth + delp * (-k3Over11 + delp * k3Over26)) +
                          delp * ea * (kOneThird - delp * k3Over22) - kOneThird * delp * ec) /
                         (ave * std::sqrt(ave));
}

// What the three Legendre forms put into the Carlson forms, next to the constant 1.0.
struct Legendre {
  Legendre(double phi, double k)
      : s(std::sin(phi)), cc(square(std::cos(phi))), q((1.0 - s * k) * (1.0 + s * k)) {}
  double s, cc, q;
};

}  // namespace

double math_func_carlsons_rc(double x, double y, TextBuf& err) {
  if (const char* const text = refusal_rc(x, y)) {
    err.append_text(text);
    return 0.0;
  }
  double xt = x;
  double yt = y;
  double w = 1.0;
  if (!(y > 0.0)) {
    xt = x - y;
    yt = -y;
    // The root of the negative y itself and not of xt: NaN, and so is the result.
    w = std::sqrt(x) / std::sqrt(y);
  }
  double ave = 0.0;
  double s = 0.0;
  do {
    const double alamb = 2.0 * std::sqrt(xt) * std::sqrt(yt) + yt;
    xt = 0.25 * (xt + alamb);
    yt = 0.25 * (yt + alamb);
    ave = (xt + yt + yt) * kOneThird;
    s = (yt - ave) / ave;
  } while (std::fabs(s) > kStopRc);
  // The series has 1 as its constant term. The 12.0 stays: printed results rest on it.
  return w * (12.0 + s * s * (0.3 + s * (kOneSeventh + s * (0.375 + s * k9Over22)))) /
         std::sqrt(ave);
}

double math_func_carlsons_rd(double x, double y, double z, TextBuf& err) {
  if (const char* const text = refusal_rd(x, y, z)) {
    err.append_text(text);
    return 0.0;
  }
  Triple t{x, y, z};
  double sum = 0.0;
  double fac = 1.0;
  double ave = 0.0;
  Triple del{};
  do {
    const Round r(t);
    sum = sum + fac / (r.sqrtz * (t.z + r.alamb));
    fac = 0.25 * fac;
    duplicate(t, r.alamb);
    ave = 0.2 * (t.x + t.y + 3.0 * t.z);
    del = deviations(t, ave);
  } while (greatest_magnitude(del) > kStopRd);
  const double ea = del.x * del.y;
  const double eb = del.z * del.z;
  const double ec = ea - eb;
  const double ed = ea - 6.0 * eb;
  const double ee = ed + ec + ec;
  return 3.0 * sum +
         fac *
             (1.0 + ed * (-k3Over14 + k9Over88Rd * ed - k9Over52 * del.z * ee) +
              del.z * (kOneSixth * ee + del.z * (-k9Over22 * ec + del.z * k3Over26 * ea))) /
             (ave * std::sqrt(ave));
}

double math_func_carlsons_rf(double x, double y, double z, TextBuf& err) {
  if (const char* const text = refusal_rf(x, y, z)) {
    err.append_text(text);
    return 0.0;
  }
  Triple t{x, y, z};
  double ave = 0.0;
  Triple del{};
  do {
    duplicate(t, Round(t).alamb);
    ave = (t.x + t.y + t.z) * kOneThird;
    del = deviations(t, ave);
  } while (greatest_magnitude(del) > kStopRf);
  const double e2 = del.x * del.y - del.z * del.z;
  const double e3 = del.x * del.y * del.z;
  return (1.0 + (k1Over24 * e2 - 0.1 - k3Over44 * e3) * e2 + k1Over14 * e3) / std::sqrt(ave);
}

double math_func_carlsons_rj(double x, double y, double z, double p, TextBuf& err) {
  if (const char* const text = refusal_rj(x, y, z, p)) {
    err.append_text(text);
    return 0.0;
  }
  if (p > 0.0) {
    Triple t{x, y, z};
    double pt = p;
    return sum_rj(t, pt, err);
  }
  // The principal value, by way of a positive pt. The middle one of the three is what is left
  // of their sum, so it loses digits where they differ much in size.
  Triple t{std::min({x, y, z}), 0.0, std::max({x, y, z})};
  t.y = x + y + z - t.x - t.z;
  const double a = 1.0 / (t.y - p);
  const double b = a * (t.z - t.y) * (t.y - t.x);
  double pt = t.y + b;
  const double rho = t.x * t.z / t.y;
  const double tau = p * pt / t.y;
  const double rcx = math_func_carlsons_rc(rho, tau, err);
  const double ans = sum_rj(t, pt, err);
  const double rf = math_func_carlsons_rf(t.x, t.y, t.z, err);
  return a * (b * ans + 3.0 * (rcx - rf));
}

double math_func_ellf(double phi, double k, TextBuf& err) {
  const Legendre g(phi, k);
  return g.s * math_func_carlsons_rf(g.cc, g.q, 1.0, err);
}

double math_func_elle(double phi, double k, TextBuf& err) {
  const Legendre g(phi, k);
  const double rf = math_func_carlsons_rf(g.cc, g.q, 1.0, err);
  const double rd = math_func_carlsons_rd(g.cc, g.q, 1.0, err);
  return g.s * (rf - square(g.s * k) * rd / 3.0);
}

double math_func_ellpi(double phi, double n, double k, TextBuf& err) {
  const Legendre g(phi, k);
  const double enss = g.s * n * g.s;
  const double rf = math_func_carlsons_rf(g.cc, g.q, 1.0, err);
  const double rj = math_func_carlsons_rj(g.cc, g.q, 1.0, 1.0 + enss, err);
  return g.s * (rf - enss * rj / 3.0);
}

void math_func_sncndn(double u, double emmc, double& sn, double& cn, double& dn, TextBuf& /*err*/) {
  if (emmc == 0.0) {
    cn = 1.0 / std::cosh(u);
    dn = cn;
    sn = std::tanh(u);
    return;
  }
  double emc = emmc;
  double d = 0.0;
  const bool bo = emc < 0.0;
  if (bo) {  // a parameter above 1 is turned into one below 1
    d = 1.0 - emc;
    emc = emc / (-1.0 / d);
    d = std::sqrt(d);
    u = u * d;
  }

  std::array<double, kMostLandenStages> em{};
  std::array<double, kMostLandenStages> en{};
  std::size_t stages = 0;
  double a = 1.0;
  double c = 0.0;
  dn = 1.0;
  while (stages < em.size()) {
    emc = std::sqrt(emc);
    em[stages] = a;
    en[stages] = emc;
    ++stages;
    c = 0.5 * (a + emc);
    if (std::fabs(a - emc) <= kStopLanden * a) break;
    emc = emc * a;
    a = c;
  }

  u = u * c;
  sn = std::sin(u);
  cn = std::cos(u);
  if (sn != 0.0) {
    a = cn / sn;
    c = c * a;
    while (stages > 0) {
      --stages;
      const double b = em[stages];
      a = a * c;
      c = c * dn;
      dn = (en[stages] + a) / (b + a);
      a = c / b;
    }
    a = 1.0 / std::sqrt(c * c + 1.0);
    sn = sn >= 0.0 ? a : -a;
    cn = c * sn;
  }
  if (bo) {
    std::swap(cn, dn);
    sn = sn / d;
  }
}

}  // namespace quantiverse
