#include "numerics/integrals.h"

#include <gtest/gtest.h>

#include <boost/math/special_functions/erf.hpp>
#include <boost/math/special_functions/expint.hpp>
#include <cmath>

#include "numerics/calls.h"

namespace quantiverse {
namespace {

using Real = long double;

constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
constexpr int kLargestOrder = std::numeric_limits<int>::max();

double relative_error(double value, Real exact) {
  return static_cast<double>(std::fabs(value - exact) / std::fabs(exact));
}

Real reference_ei(Real x) { return boost::math::expint(x); }

Real reference_dawson(Real x) {  // its power series
  Real sum = 0;
  Real term = x;
  for (int n = 0; n < 30; ++n) {
    sum += term;
    term *= -2 * x * x / (2 * n + 3);
  }
  return sum;
}

Real reference_inverse(Real p) { return -std::sqrt(Real{2}) * boost::math::erfc_inv(2 * p); }

TEST(Integrals, Ei) {
  const double bound = -std::log(6e-8);
  const double above = std::nextafter(bound, 17.0);
  // The series change at the bound, which still belongs to the better one.
  TextBuf err;
  EXPECT_LT(relative_error(math_func_ei(bound, err), reference_ei(bound)), 5e-8);
  EXPECT_GT(relative_error(math_func_ei(above, err), reference_ei(above)), 1e-7);
}

TEST(Integrals, ExponentialIntegralsOfWholeOrder) {
  // x = 1 still belongs to the series.
  TextBuf err;
  const double above = std::nextafter(1.0, 2.0);
  EXPECT_LT(relative_error(math_func_expint(1, 1.0, err), boost::math::expint(1, Real{1})), 3e-8);
  EXPECT_GT(relative_error(math_func_expint(1, above, err), boost::math::expint(1, Real{1})), 2e-7);
}

TEST(Integrals, Dawson) {
  const double below = std::nextafter(0.2, 0.0);
  EXPECT_LT(relative_error(math_func_dawson(below), reference_dawson(below)), 1e-7);
  EXPECT_GT(relative_error(math_func_dawson(0.2), reference_dawson(0.2)), 2e-7);
  // 1 / (2 x) is the limit, as long as its steps can be counted.
  for (const double x : {1e6, 1.7e9}) EXPECT_NEAR(2 * x * math_func_dawson(x), 1.0, 5e-7) << x;
  for (const double x : {0.1, 0.2, 0.7, 33.0}) {
    EXPECT_EQ(math_func_dawson(-x), -math_func_dawson(x));
  }
}

TEST(Integrals, NormalDistribution) {
  const double below = std::nextafter(1.87, 0.0);
  const double end = std::nextafter(6.0, 0.0);
  // The upper range takes its bound, and the two don't quite meet.
  EXPECT_NEAR(math_func_CumNormal(1.87) - math_func_CumNormal(below), 1.74e-9, 5e-12);
  EXPECT_NEAR(1.0 - math_func_CumNormal(end), 1.378e-9, 1e-12);
  EXPECT_EQ(1.0 - math_func_CumNormal(-end), math_func_CumNormal(end));
}

TEST(Integrals, InverseOfTheNormalDistribution) {
  const double low = 0.5 - 0.42;
  TextBuf err;
  // The centre is the worse one where the two meet.
  EXPECT_GT(std::fabs(math_func_CumNormalInv(low + 1e-9, err) - reference_inverse(low + 1e-9)),
            2.9e-9);
  // 0 and 1 are moved inside, each by a step of its own.
  const double lowest = math_func_CumNormalInv(1e-16, err);
  const double highest = math_func_CumNormalInv(0.9999999999999999, err);
  EXPECT_NEAR(lowest, -8.222082, 1e-6);
  EXPECT_NEAR(highest, 8.209536, 1e-6);
  for (const double p : {-0.0, 0.0, kSmallest, 9.9e-17}) {
    EXPECT_EQ(math_func_CumNormalInv(p, err), lowest);
  }
  EXPECT_EQ(math_func_CumNormalInv(1.0, err), highest);
  EXPECT_EQ(err.text(), "");
}

TEST(Integrals, Digits) {
  expect_digits({
      {CALL(math_func_ei(3.0, err)), 9.933832545320733, ""},
      {CALL(math_func_ei(18.0, err)), 3877903.933909232, ""},
      {CALL(math_func_expint(1, 0.7, err)), 0.373768843969196, ""},
      {CALL(math_func_expint(3, 1.5, err)), 0.05673947820988069, ""},
      {CALL(math_func_dawson(0.15)), 0.14777011982142857, ""},
      {CALL(math_func_dawson(-30.0)), -0.016675947980720345, ""},
      {CALL(math_func_CumNormal(1.0)), 0.8413447442224204, ""},
      {CALL(math_func_CumNormal(-3.0)), 0.0013498993404549942, ""},
      {CALL(math_func_CumNormalInv(0.3, err)), -0.5244005119066527, ""},
      {CALL(math_func_CumNormalInv(0.001, err)), -3.09023230632753, ""},
  });
}

TEST(Integrals, EndsOfTheDomain) {
  expect_calls({
      {CALL(math_func_ei(1e-31, err)), std::log(1e-31) + 0.5772156649015329, ""},
      {CALL(math_func_ei(709.79, err)), kInf, ""},
      {CALL(math_func_ei(kInf, err)), kNan, ""},
      {CALL(math_func_ei(kNan, err)), kNan, ""},
      {CALL(math_func_expint(2, 0.0, err)), 1.0, ""},
      {CALL(math_func_expint(5, -0.0, err)), 0.25, ""},
      {CALL(math_func_expint(0, kInf, err)), 0.0, ""},
      {CALL(math_func_expint(0, kNan, err)), kNan, ""},
      {CALL(math_func_expint(1, 1e308, err)), 0.0, ""},
      {CALL(math_func_expint(kLargestOrder, 0.0, err)), 1.0 / (kLargestOrder - 1.0), ""},
      {CALL(math_func_dawson(0.0)), 0.0, ""},
      {CALL(math_func_dawson(1e300)), kNan, ""},
      {CALL(math_func_dawson(-kInf)), kNan, ""},
      {CALL(math_func_dawson(kNan)), kNan, ""},
      {CALL(math_func_CumNormal(0.0)), 0.5, ""},
      {CALL(math_func_CumNormal(6.0)), 1.0, ""},
      {CALL(math_func_CumNormal(-6.0)), 0.0, ""},
      {CALL(math_func_CumNormal(-kInf)), 0.0, ""},
      {CALL(math_func_CumNormal(kNan)), 0.0, ""},
      {CALL(math_func_CumNormalInv(0.5, err)), 0.0, ""},
      {CALL(math_func_CumNormalInv(kNan, err)), kNan, ""},
  });
  // Terms of the largest order are counted without overflow: E_n(x) is near exp(-x) / (x + n).
  for (const double x : {1e-300, 0.5, 1.0, 2.0, 700.0}) {
    TextBuf err;
    const double expected = std::exp(-x) / (x + kLargestOrder);
    EXPECT_NEAR(math_func_expint(kLargestOrder, x, err) / expected, 1.0, 2e-8) << x;
    EXPECT_EQ(err.text(), "");
  }
}

TEST(Integrals, Failures) {
  const char* const no_argument = "ERROR:  arg error routine math_func_expint().\n";
  const char* const negative_x = "ERROR:  x must be >= 0 in routine math_func_expint().\n";
  const char* const not_positive = "ERROR:  x must be > 0 in routine math_func_ei().\n";
  expect_calls({
      {CALL(math_func_ei(0.0, err)), 0.0, not_positive},
      {CALL(math_func_ei(-kInf, err)), 0.0, not_positive},
      {CALL(math_func_expint(-1, -1.0, err)), 0.0,
       "ERROR:  n must be >= 0 in routine math_func_expint().\n"},
      {CALL(math_func_expint(0, -1.0, err)), 0.0, negative_x},
      {CALL(math_func_expint(0, 0.0, err)), 0.0, no_argument},
      {CALL(math_func_expint(1, 0.0, err)), 0.0, no_argument},
      {CALL(math_func_expint(1, kInf, err)), 0.0,
       "ERROR:  continued fraction failed in routine math_func_expint().\n"},
      {CALL(math_func_expint(101, kNan, err)), 0.0,
       "ERROR:  series failed in routine math_func_expint().\n"},
      {CALL(math_func_CumNormalInv(-kSmallest, err)), 0.0,
       "ERROR: n must be >= 0 in in routine math_func_CumNormalInv().\n"},
      {CALL(math_func_CumNormalInv(1.0000001, err)), 0.0,
       "ERROR: n must be <= 1 in in routine math_func_CumNormalInv().\n"},
  });
  TextBuf err;
  math_func_ei(0.0, err);
  math_func_expint(1, 0.0, err);
  EXPECT_EQ(err.text(), std::string(not_positive) + no_argument);  // what was there stays
}

}  // namespace
}  // namespace quantiverse
