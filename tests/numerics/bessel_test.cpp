#include "numerics/bessel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <boost/math/special_functions/bessel.hpp>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

#include "numerics/calls.h"

namespace quantiverse {
namespace {

using Real = long double;

// At a seam the value stands apart from the neighbour that the other form gives.
TEST(Bessel, SeamsBelongToTheRightForm) {
  struct Seam {
    double (*f)(double);
    double x;
    bool is_below;  // the form of the smaller arguments gives the seam itself
  };
  for (const auto& [f, x, is_below] : {Seam{math_func_bessi0, 3.75, false},
                                       {math_func_bessi1, 3.75, false},
                                       {math_func_bessk0, 2.0, true},
                                       {math_func_bessk1, 2.0, true},
                                       {math_func_bessj0, 8.0, false},
                                       {math_func_bessj1, -8.0, true},
                                       {math_func_bessy0, 8.0, false},
                                       {math_func_bessy1, 8.0, false}}) {
    const double from_below = std::fabs(f(x) - f(std::nextafter(x, -10.0)));
    const double from_above = std::fabs(f(x) - f(std::nextafter(x, 10.0)));
    EXPECT_EQ(from_below < from_above, is_below) << x;
    EXPECT_GT(std::max(from_below, from_above), 1e-12) << x;
  }
}

TEST(Bessel, OddConstantsOfTheApproximationsStay) {
  EXPECT_EQ(math_func_bessj0(0.0), 57568490574.0 / 57568490411.0);
  EXPECT_EQ(math_func_bessi0(0.0), 1.0);
  // At 3.75 the polynomial is the sum of its coefficients, a digit of the fourth among them.
  const double sum = 0.39894228 - 0.03988024 - 0.00362018 + 0.0016381 - 0.01031555 + 0.02282967 -
                     0.02895312 + 0.01787654 - 0.00420059;
  EXPECT_NEAR(math_func_bessi1(3.75) * std::sqrt(3.75) / std::exp(3.75), sum, 1e-15);
}

// What is scaled away ends as 0, and not before it has to.
TEST(Bessel, WholeOrdersFadeWhereTheReferenceDoes) {
  TextBuf err;
  for (int n = 100; n < 220; ++n) {
    SCOPED_TRACE(n);
    for (const auto& [value, exact] :
         {std::pair{math_func_bessj(n, 1.0, err), boost::math::cyl_bessel_j(Real{1} * n, Real{1})},
          std::pair{math_func_bessi(n, 1.0, err),
                    boost::math::cyl_bessel_i(Real{1} * n, Real{1})}}) {
      const Real slack = 4e-8L * exact + 2.0L * std::numeric_limits<double>::denorm_min();
      EXPECT_LE(std::fabs(Real{value} - exact), slack) << value;
    }
  }
}

TEST(Bessel, NegativeOrdersTurnTheSignOfOddOnes) {
  TextBuf err;
  for (const int n : {1, 2, 3, 8}) {
    const double sign = n % 2 == 0 ? 1.0 : -1.0;
    EXPECT_NEAR(math_func_bessj(-n, 2.5, err), sign * math_func_bessj(n, 2.5, err), 1e-11);
    EXPECT_NEAR(math_func_bessy(-n, 2.5, err) / math_func_bessy(n, 2.5, err), sign, 1e-14);
  }
}

TEST(Bessel, NegativeOrdersAreMadeOfBothKinds) {
  TextBuf err;
  const double sine2 = std::sin(2 * std::numbers::pi);
  const double k2 = math_func_bessk(2, 0.001, err);
  EXPECT_NE(math_func_bessi(-2, 0.001, err), math_func_bessi(2, 0.001, err));
  EXPECT_EQ(math_func_bessi(-2, 0.001, err),
            k2 * (sine2 * 0.6366197723675814) + math_func_bessi(2, 0.001, err));
  EXPECT_NEAR(math_func_bessj(-2, 1e-9, err), -4e18 / std::numbers::pi * std::fabs(sine2), 1e-4);
  EXPECT_EQ(math_func_bessk(-7, 3.0, err), math_func_bessk(7, 3.0, err));
  EXPECT_EQ(err.text(), "");
}

// Where no message is due, where the arithmetic has the last word, and orders that would take
// for ever if they were not left early.
TEST(Bessel, WholeOrdersEndOnEveryArgument) {
  constexpr int kHuge = 1'000'000'000;
  constexpr int kNone = std::numeric_limits<int>::min();
  expect_calls({
      {CALL(math_func_bessj(2, 0.0, err)), 0.0, ""},
      {CALL(math_func_bessi(2, 0.0, err)), 0.0, ""},
      {CALL(math_func_bessk(0, 0.0, err)), kInf, ""},
      {CALL(math_func_bessk(0, -1.0, err)), kNan, ""},
      {CALL(math_func_bessy(0, 0.0, err)), -kInf, ""},
      {CALL(math_func_bessy(1, -1.0, err)), kNan, ""},
      {CALL(math_func_bessj(200, 1e-300, err)), kNan, ""},
      {CALL(math_func_bessj(-200, 1.0, err)), kNan, ""},  // Y overflows
      {CALL(math_func_bessk(200, 1.0, err)), kInf, ""},
      {CALL(math_func_bessj(kHuge, 1.0, err)), 0.0, ""},
      {CALL(math_func_bessj(kHuge, 9.9e8, err)), 0.0, ""},
      {CALL(math_func_bessj(kHuge, kInf, err)), kNan, ""},
      {CALL(math_func_bessj(kHuge, kNan, err)), kNan, ""},
      {CALL(math_func_bessi(kHuge, 1.0, err)), 0.0, ""},
      {CALL(math_func_bessi(kHuge, 0.3, err)), kNan, ""},
      {CALL(math_func_bessi(kHuge, 1e9, err)), kNan, ""},
      {CALL(math_func_bessi(kHuge, kInf, err)), kNan, ""},
      {CALL(math_func_bessk(kHuge, 1.0, err)), kInf, ""},
      {CALL(math_func_bessk(kHuge, 800.0, err)), 0.0, ""},
      {CALL(math_func_bessk(kHuge, kInf, err)), 0.0, ""},
      {CALL(math_func_bessy(kHuge, 1.0, err)), kNan, ""},
      {CALL(math_func_bessy(kHuge, kInf, err)), kNan, ""},
      {CALL(math_func_bessj(kNone, 1.0, err)), kNan, ""},
      {CALL(math_func_bessi(kNone, 1.0, err)), kNan, ""},
      {CALL(math_func_bessk(kNone, 1.0, err)), kNan, ""},
      {CALL(math_func_bessy(kNone, 1.0, err)), kNan, ""},
  });
  TextBuf err;
  EXPECT_TRUE(std::signbit(math_func_bessj(kHuge + 1, -1.0, err)));
  EXPECT_TRUE(std::signbit(math_func_bessi(kHuge + 1, -1.0, err)));
}

}  // namespace
}  // namespace quantiverse
