#include "numerics/integrals.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

#include "numerics/sign_of.h"
#include "text/numbers.h"

namespace quantiverse {
namespace {

constexpr double kEuler = 0.5772156649015329;
constexpr int kIterationLimit = 100;

// Ends the series, and also parts them: the asymptotic one can reach it only for x above -ln of
// it.
constexpr double kEiTolerance = 6e-8;
constexpr double kEiSmallest = 1e-30;

constexpr double kExpintTolerance = 3e-7;
// 1 / 1e-30 as doubles divide: stands for an infinite start.
constexpr double kLentzStart = 9.999999999999999e+29;

// Dawson's integral from a sum over odd multiples of the step, for |x| >= 0.2. Error 4.1e-7
// relative, of which the step makes nearly all.
constexpr double kDawsonStep = 0.4;
constexpr int kDawsonTerms = 6;
constexpr double kDawsonScale = 0.5641895835;  // 1 / sqrt(pi)
// Its power series for |x| < 0.2: x (1 - s1 x^2 (1 - s2 x^2 (1 - s3 x^2))) with these s. Error
// 4.5e-8 relative.
constexpr double kDawsonSeriesBound = 0.2;
constexpr std::array kDawsonSeries = {0.6666666666666666, 0.4, 0.2857142857142857};

// Polynomials, coefficients ascending.

// (Phi(x) - 0.5) / x as a quotient in x^2, for |x| < 1.87. Error of Phi 2.5e-9.
constexpr double kCentreBound = 1.87;
constexpr std::array kCentreNumerator = {0.398942270991, 0.020133760596, 0.002946756074};
constexpr std::array kCentreDenominator = {1.0, 0.217134277847, 0.018576112465, 0.000643163695};

// The sixteenth root of 1 - Phi(x) as a quotient in x, for 1.87 <= x < 6. Error of Phi 2.4e-9.
constexpr double kTailBound = 6.0;
constexpr std::array kTailNumerator = {1.398247031184, -0.360040248231, 0.022719786588};
constexpr std::array kTailDenominator = {1.460954518699, -0.305459640162, 0.038611796258,
                                         -0.003787400686};

// The inverse of Phi over p - 0.5 as a quotient in (p - 0.5)^2, for |p - 0.5| < 0.42. Error
// 3.1e-9.
constexpr double kInverseCentreBound = 0.42;
constexpr std::array kInverseNumerator = {2.50662823884, -18.61500062529, 41.39119773534,
                                          -25.44106049637};
constexpr std::array kInverseDenominator = {1.0, -8.4735109309, 23.08336743743, -21.06224101826,
                                            3.13082909833};
// Minus the inverse of Phi at r in ln(-ln(r)), for 1e-16 <= r <= 0.08. Error 2.3e-10 down to
// 1e-12, 3.4e-8 below.
constexpr std::array kInverseTail = {
    0.3374754822726147, 0.9761690190917186, 0.1607979714918209,
    0.0276438810333863, 0.0038405729373609, 0.0003951896511919,
    3.21767881768e-05,  2.888167364e-07,    3.960315187e-07,
};
constexpr double kSmallestProbability = 1e-16;
constexpr double kLargestProbability = 0.9999999999999999;

double fail(TextBuf& err, std::string_view message) {
  err.append_text(message);
  return 0.0;
}

// Horner's rule.
template <std::size_t N>
double polynomial(const std::array<double, N>& coefficients, double x) {
  double sum = coefficients[N - 1];
  for (std::size_t i = N - 1; i-- > 0;) sum = sum * x + coefficients[i];
  return sum;
}

double ei_power_series(double x, TextBuf& err) {
  double sum = 0.0;
  double fact = 1.0;
  for (int k = 1; k <= kIterationLimit; ++k) {
    fact = fact * x / k;
    const double term = fact / k;
    sum += term;
    if (term < kEiTolerance * sum) return sum + std::log(x) + kEuler;
  }
  return fail(err, "ERROR:  Series failed to converge in routine math_func_ei().\n");
}

double ei_asymptotic(double x) {
  double sum = 0.0;
  double term = 1.0;
  for (int k = 1; k <= kIterationLimit; ++k) {
    const double prev = term;
    term = term * k / x;
    if (term < kEiTolerance) break;
    if (!(term < prev)) {
      // The terms have begun to grow, so the last one that was added is the error.
      sum -= prev;
      break;
    }
    sum += term;
  }
  return std::exp(x) * (1.0 + sum) / x;
}

double expint_fraction(int n, double x, TextBuf& err) {
  const double nm1 = n - 1;
  double b = x + n;
  double c = kLentzStart;
  double d = 1.0 / b;
  double h = d;
  for (int i = 1; i <= kIterationLimit; ++i) {
    const double a = -i * (nm1 + i);
    b += 2.0;
    d = 1.0 / (a * d + b);
    c = b + a / c;
    const double del = c * d;
    h *= del;
    if (std::fabs(del - 1.0) < kExpintTolerance) return h * std::exp(-x);
  }
  return fail(err, "ERROR:  continued fraction failed in routine math_func_expint().\n");
}

// psi(n + 1) for whole n.
double psi_after(int n) {
  double psi = -kEuler;
  for (int i = 1; i <= n; ++i) psi += 1.0 / i;
  return psi;
}

double expint_series(int n, double x, TextBuf& err) {
  const int nm1 = n - 1;
  double ans = nm1 != 0 ? 1.0 / nm1 : -std::log(x) - kEuler;
  double fact = 1.0;
  for (int i = 1; i <= kIterationLimit; ++i) {
    fact = fact * -x / i;
    const double del = i != nm1 ? -fact / (i - nm1) : fact * (-std::log(x) + psi_after(nm1));
    ans += del;
    if (std::fabs(del) < std::fabs(ans) * kExpintTolerance) return ans;
  }
  return fail(err, "ERROR:  series failed in routine math_func_expint().\n");
}

// exp(-(odd multiples of the step) squared): the same for every argument.
const std::array<double, kDawsonTerms>& dawson_table() {
  static const std::array<double, kDawsonTerms> table = [] {
    std::array<double, kDawsonTerms> c{};
    double odd = 1.0;
    for (double& value : c) {
      const double node = odd * kDawsonStep;
      value = std::exp(-(node * node));
      odd += 2.0;
    }
    return c;
  }();
  return table;
}

}  // namespace

double math_func_ei(double x, TextBuf& err) {
  if (x <= 0.0) return fail(err, "ERROR:  x must be > 0 in routine math_func_ei().\n");
  if (x < kEiSmallest) return std::log(x) + kEuler;
  if (x <= -std::log(kEiTolerance)) return ei_power_series(x, err);
  return ei_asymptotic(x);
}

double math_func_expint(int n, double x, TextBuf& err) {
  if (n < 0) return fail(err, "ERROR:  n must be >= 0 in routine math_func_expint().\n");
  if (x < 0.0) return fail(err, "ERROR:  x must be >= 0 in routine math_func_expint().\n");
  if (x == 0.0 && (n == 0 || n == 1)) {
    return fail(err, "ERROR:  arg error routine math_func_expint().\n");
  }
  if (n == 0) return std::exp(-x) / x;
  if (x == 0.0) return 1.0 / (n - 1);
  if (x > 1.0) return expint_fraction(n, x, err);
  return expint_series(n, x, err);
}

double math_func_dawson(double x) {
  const double xx = std::fabs(x);
  if (xx < kDawsonSeriesBound) {
    const auto& [s1, s2, s3] = kDawsonSeries;
    const double x2 = x * x;
    return x * (1.0 - s1 * x2 * (1.0 - s2 * x2 * (1.0 - s3 * x2)));
  }
  const double ne = 2.0 * truncate_to_int32(0.5 * xx / kDawsonStep + 0.5);
  const double xp = xx - ne * kDawsonStep;
  double e1 = std::exp(2.0 * xp * kDawsonStep);
  const double e2 = e1 * e1;
  double d1 = ne + 1.0;
  double d2 = d1 - 2.0;
  double sum = 0.0;
  for (const double c : dawson_table()) {
    sum += c * (e1 / d1 + 1.0 / (d2 * e1));
    d1 += 2.0;
    d2 -= 2.0;
    e1 *= e2;
  }
  return kDawsonScale * sign_of(std::exp(-xp * xp), x) * sum;
}

double math_func_CumNormal(double x) {
  const double size = std::fabs(x);
  if (size < kCentreBound) {
    const double y = x * x;
    return 0.5 + x * polynomial(kCentreNumerator, y) / polynomial(kCentreDenominator, y);
  }
  if (size < kTailBound) {
    double v = polynomial(kTailNumerator, size) / polynomial(kTailDenominator, size);
    for (int i = 0; i < 4; ++i) v *= v;
    return x >= 0.0 ? 1.0 - v : v;
  }
  return x >= 0.0 ? 1.0 : 0.0;
}

double math_func_CumNormalInv(double p, TextBuf& err) {
  if (p < 0.0) {
    return fail(err, "ERROR: n must be >= 0 in in routine math_func_CumNormalInv().\n");
  }
  if (p > 1.0) {
    return fail(err, "ERROR: n must be <= 1 in in routine math_func_CumNormalInv().\n");
  }
  if (p < kSmallestProbability) p = kSmallestProbability;
  if (p > kLargestProbability) p = kLargestProbability;

  const double x = p - 0.5;
  if (std::fabs(x) < kInverseCentreBound) {
    const double y = x * x;
    return x * polynomial(kInverseNumerator, y) / polynomial(kInverseDenominator, y);
  }
  const double r = x <= 0.0 ? p : 1.0 - p;
  const double result = polynomial(kInverseTail, std::log(-std::log(r)));
  return x < 0.0 ? -result : result;
}

}  // namespace quantiverse
