#include "numerics/bessel.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numbers>

#include "numerics/bessel_coefficients.h"
#include "text/numbers.h"

// Whole orders. The recurrences run in the order, so their cost grows with it. Where the outcome
// is certain before they end, they are left early; every such exit gives the value that the full
// run would have given.
namespace quantiverse {
namespace {

using std::numbers::pi;

constexpr double kTwoOverPi = 0.636619772;  // nine digits, as in the approximations
constexpr double kTwoOverPiExact = 0.6366197723675814;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kNoOpposite = std::numeric_limits<int>::min();

// Where a downward recurrence starts: the larger, the more digits.
constexpr double kStartAccuracy = 40.0;
constexpr double kRescaleAbove = 1e10;
constexpr double kRescaleBy = 1e-10;

// Below this growth a step, rescaling keeps a downward recurrence away from overflow for good.
constexpr double kTameGrowth = 9.99e9;

template <std::size_t kTerms>
double polynomial(const std::array<double, kTerms>& c, double y) {
  double value = c[kTerms - 1];
  for (std::size_t k = kTerms - 1; k > 0; --k) value = c[k - 1] + y * value;
  return value;
}

template <std::size_t kTerms>
double numerator(const bessel::Rational<kTerms>& r, double y) {
  return polynomial(r.numerator, y);
}

template <std::size_t kTerms>
double denominator(const bessel::Rational<kTerms>& r, double y) {
  return polynomial(r.denominator, y);
}

double cosine_wave(const bessel::Wave& w, double ax) {
  const double z = 8.0 / ax;
  const double y = z * z;
  const double t = ax - w.phase;
  return std::sqrt(kTwoOverPi / ax) *
         (std::cos(t) * polynomial(w.p, y) - z * std::sin(t) * polynomial(w.q, y));
}

double sine_wave(const bessel::Wave& w, double x) {
  const double z = 8.0 / x;
  const double y = z * z;
  const double t = std::fabs(x) - w.phase;
  return std::sqrt(kTwoOverPi / x) *
         (std::sin(t) * polynomial(w.p, y) + z * std::cos(t) * polynomial(w.q, y));
}

bool is_odd(int n) { return n % 2 != 0; }

// How far above order `n` a downward recurrence has to start.
std::int64_t start_order(int n) {
  return std::int64_t{n} + truncate_to_int32(std::sqrt(kStartAccuracy * n));
}

// The order n of J or Y from their orders 0 and 1, for the argument 2 / tox.
double upward(int n, double tox, double order_0, double order_1) {
  double previous = order_0;
  double current = order_1;
  for (int j = 1; j < n; ++j) {
    const double next = j * tox * current - previous;
    previous = current;
    current = next;
    if (std::isnan(current)) break;  // and stays so
  }
  return current;
}

double upward_j(int n, double ax) {
  return upward(n, 2.0 / ax, math_func_bessj0(ax), math_func_bessj1(ax));
}

double downward_j(int n, double ax) {
  const double tox = 2.0 / ax;
  double current = 1.0;
  double next = 0.0;
  double answer = 0.0;
  double sum = 0.0;
  bool is_even = false;
  for (std::int64_t j = 2 * (start_order(n) / 2); j > 0; --j) {
    const double growth = static_cast<double>(j) * tox;
    const double lower = growth * current - next;
    next = current;
    current = lower;
    if (std::fabs(current) > kRescaleAbove) {
      current = current * kRescaleBy;
      next = next * kRescaleBy;
      answer = answer * kRescaleBy;
      sum = sum * kRescaleBy;
    }
    if (is_even) sum = sum + current;
    is_even = !is_even;
    if (j == n) answer = next;
    if (std::isnan(current)) return kNaN;  // which the sum would end as
    // An answer that was scaled away stays 0. What it would be divided by is finite, and
    // positive, being the size of the start.
    if (j < n && answer == 0.0 && growth <= kTameGrowth) return 0.0;
  }
  sum = 2.0 * sum - current;
  return answer / sum;
}

// True if the recurrence of I is sure to scale its answer away. Two steps together multiply
// by at least 1 + (2 j / x)^2, so the n steps after the answer was taken multiply by at least
// 1 + (n / x)^2 to the power n / 4 - 1; no more than 330 decades survive.
bool vanishes(int n, double ax) {
  const double ratio = n / ax;
  return static_cast<double>(2 * start_order(n)) * (2.0 / ax) <= kTameGrowth &&
         (0.25 * n - 1.0) * std::log10(1.0 + ratio * ratio) > 400.0;
}

// The answer before the order 0 gives it its size.
struct Scaled {
  double answer;
  double current;
};

Scaled downward_i(int n, double ax) {
  if (vanishes(n, ax)) return {0.0, 1.0};
  const double tox = 2.0 / ax;
  double current = 1.0;
  double next = 0.0;
  double answer = 0.0;
  for (std::int64_t j = 2 * start_order(n); j > 0; --j) {
    const double lower = next + static_cast<double>(j) * tox * current;
    next = current;
    current = lower;
    if (std::fabs(current) > kRescaleAbove) {
      answer = answer * kRescaleBy;
      current = current * kRescaleBy;
      next = next * kRescaleBy;
    }
    if (j == n) answer = next;
    // An infinity stays one down to order 0, and the answer would be taken as infinite too.
    if (j > n && std::isinf(current)) return {current, current};
  }
  return {answer, current};
}

}  // namespace

double math_func_bessi0(double x) {
  const double ax = std::fabs(x);
  if (ax < 3.75) {
    const double t = x / 3.75;
    return polynomial(bessel::kI0Small, t * t);
  }
  return std::exp(ax) / std::sqrt(ax) * polynomial(bessel::kI0Large, 3.75 / ax);
}

double math_func_bessi1(double x) {
  const double ax = std::fabs(x);
  double value = 0.0;
  if (ax < 3.75) {
    const double t = x / 3.75;
    value = ax * polynomial(bessel::kI1Small, t * t);
  } else {
    value = std::exp(ax) / std::sqrt(ax) * polynomial(bessel::kI1Large, 3.75 / ax);
  }
  return x < 0.0 ? -value : value;
}

double math_func_bessk0(double x) {
  if (x <= 2.0) {
    return -std::log(x / 2.0) * math_func_bessi0(x) + polynomial(bessel::kK0Small, x * x / 4.0);
  }
  return std::exp(-x) / std::sqrt(x) * polynomial(bessel::kK0Large, 2.0 / x);
}

double math_func_bessk1(double x) {
  if (x <= 2.0) {
    return std::log(x / 2.0) * math_func_bessi1(x) +
           1.0 / x * polynomial(bessel::kK1Small, x * x / 4.0);
  }
  return std::exp(-x) / std::sqrt(x) * polynomial(bessel::kK1Large, 2.0 / x);
}

double math_func_bessj0(double x) {
  const double ax = std::fabs(x);
  if (ax < 8.0) {
    const double y = x * x;
    return numerator(bessel::kJ0Small, y) / denominator(bessel::kJ0Small, y);
  }
  return cosine_wave(bessel::kJ0Large, ax);
}

double math_func_bessj1(double x) {
  const double ax = std::fabs(x);
  if (ax < 8.0) {
    const double y = x * x;
    return x * numerator(bessel::kJ1Small, y) / denominator(bessel::kJ1Small, y);
  }
  const double value = cosine_wave(bessel::kOrder1Large, ax);
  return x < 0.0 ? -value : value;
}

double math_func_bessy0(double x) {
  if (x < 8.0) {
    const double y = x * x;
    return numerator(bessel::kY0Small, y) / denominator(bessel::kY0Small, y) +
           kTwoOverPi * math_func_bessj0(x) * std::log(x);
  }
  return sine_wave(bessel::kY0Large, x);
}

double math_func_bessy1(double x) {
  if (x < 8.0) {
    const double y = x * x;
    return x * numerator(bessel::kY1Small, y) / denominator(bessel::kY1Small, y) +
           kTwoOverPi * (math_func_bessj1(x) * std::log(x) - 1.0 / x);
  }
  return sine_wave(bessel::kOrder1Large, x);
}

double math_func_bessj(int n, double x, TextBuf& err) {
  if (n == kNoOpposite) return kNaN;
  if (n < 0) {
    const int m = -n;
    const double j = math_func_bessj(m, x, err);
    const double y = math_func_bessy(m, x, err);
    return j * std::cos(m * pi) - y * std::sin(m * pi);
  }
  if (n == 0) return math_func_bessj0(x);
  if (n == 1) return math_func_bessj1(x);
  const double ax = std::fabs(x);
  if (ax == 0.0) return 0.0;
  const double value = ax > n ? upward_j(n, ax) : downward_j(n, ax);
  return x < 0.0 && is_odd(n) ? -value : value;
}

double math_func_bessi(int n, double x, TextBuf& err) {
  if (n == kNoOpposite) return kNaN;
  if (n < 0) {
    const int m = -n;
    const double k = math_func_bessk(m, x, err);
    const double i = math_func_bessi(m, x, err);
    return k * (std::sin(m * pi) * kTwoOverPiExact) + i;
  }
  if (n == 0) return math_func_bessi0(x);
  if (n == 1) return math_func_bessi1(x);
  if (x == 0.0) return 0.0;
  const double order0 = math_func_bessi0(x);
  if (std::isnan(order0)) return order0;
  const Scaled scaled = downward_i(n, std::fabs(x));
  const double value = scaled.answer * order0 / scaled.current;
  return x < 0.0 && is_odd(n) ? -value : value;
}

double math_func_bessy(int n, double x, TextBuf& err) {
  if (n == kNoOpposite) return kNaN;
  if (n < 0) {
    const int m = -n;
    const double j = math_func_bessj(m, x, err);
    const double y = math_func_bessy(m, x, err);
    return j * std::sin(m * pi) + y * std::cos(m * pi);
  }
  if (n == 0) return math_func_bessy0(x);
  if (n == 1) return math_func_bessy1(x);
  return upward(n, 2.0 / x, math_func_bessy0(x), math_func_bessy1(x));
}

double math_func_bessk(int n, double x, TextBuf& /*err*/) {
  if (n == kNoOpposite) return kNaN;
  if (n < 0) n = -n;
  if (n == 0) return math_func_bessk0(x);
  if (n == 1) return math_func_bessk1(x);
  const double tox = 2.0 / x;
  double previous = math_func_bessk0(x);
  double current = math_func_bessk1(x);
  for (int j = 1; j < n; ++j) {
    const double next = previous + j * tox * current;
    // Nothing changes any more once the value is no number or both are 0.
    const bool is_settled = !std::isfinite(next) || (next == 0.0 && current == 0.0);
    previous = current;
    current = next;
    if (is_settled) break;
  }
  return current;
}

}  // namespace quantiverse
