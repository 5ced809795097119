#include "numerics/bessel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <tuple>
#include <utility>

#include "numerics/accuracy.h"
#include "numerics/bessel_reference.h"

namespace quantiverse {
namespace {

using Real = long double;
using enum Error;
using enum Source;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kTiny = 1e-9;
const double kBelow375 = std::nextafter(3.75, 0.0);
const double kAbove2 = std::nextafter(2.0, 3.0);
const double kBelow8 = std::nextafter(8.0, 0.0);

Routine plain(double (*f)(double)) {
  return [f](double x, TextBuf&) { return f(x); };
}

TEST(Bessel, OrdersZeroAndOneKeepTheFiguresOfTheirApproximations) {
  const Routine i0 = plain(math_func_bessi0);
  const Routine i1 = plain(math_func_bessi1);
  const Routine j0 = plain(math_func_bessj0);
  const Routine j1 = plain(math_func_bessj1);
  const Routine k0 = plain(math_func_bessk0);
  const Routine k1 = plain(math_func_bessk1);
  const Routine y0 = plain(math_func_bessy0);
  const Routine y1 = plain(math_func_bessy1);
  for (const Range& range : {
           Range{"I0 small", -kBelow375, 3.7, kRelative, 3.3e-8, kMethod, i0, exact_i(0)},
           Range{"I0 large", 3.75, 700.0, kRelative, 4.7e-7, kMethod, i0, exact_i(0)},
           Range{"I1 small", -kBelow375, -0.01, kRelative, 1.3e-8, kMethod, i1, exact_i(1)},
           Range{"I1 large", 3.75, 700.0, kRelative, 5.5e-7, kMethod, i1, exact_i(1)},
           Range{"I1 below 0", -700.0, -3.75, kRelative, 5.5e-7, kMethod, i1, exact_i(1)},
           Range{"K0 small", kTiny, 2.0, kRelative, 7.6e-8, kMethod, k0, exact_k(0)},
           Range{"K0 large", kAbove2, 700.0, kRelative, 1.5e-7, kMethod, k0, exact_k(0)},
           Range{"K1 small", kTiny, 2.0, kRelative, 2.7e-8, kMethod, k1, exact_k(1)},
           Range{"K1 large", kAbove2, 700.0, kRelative, 1.7e-7, kMethod, k1, exact_k(1)},
           Range{"J0 small", -kBelow8, 7.9, kAbsolute, 4.9e-9, kMethod, j0, exact_j(0)},
           Range{"J0 large", 8.0, 1e6, kAbsolute, 1.7e-10, kMethod, j0, exact_j(0)},
           Range{"J1 small", -kBelow8, 7.9, kAbsolute, 5e-9, kMethod, j1, exact_j(1)},
           Range{"J1 large", 8.0, 1e6, kAbsolute, 2.3e-10, kMethod, j1, exact_j(1)},
           Range{"J1 below 0", -50.0, -8.0, kAbsolute, 2.3e-10, kMethod, j1, exact_j(1)},
           Range{"Y0 tiny", kTiny, 0.1, kAbsolute, 3.7e-8, kMethod, y0, exact_y(0)},
           Range{"Y0 small", 0.1, kBelow8, kAbsolute, 1.69e-8, kMethod, y0, exact_y(0)},
           Range{"Y0 large", 8.0, 1e6, kAbsolute, 1.6e-10, kMethod, y0, exact_y(0)},
           Range{"Y1 tiny", kTiny, 0.1, kRelative, 5.8e-10, kMethod, y1, exact_y(1)},
           Range{"Y1 small", 0.1, kBelow8, kAbsolute, 1.18e-8, kMethod, y1, exact_y(1)},
           Range{"Y1 large", 8.0, 1e6, kAbsolute, 2.4e-10, kMethod, y1, exact_y(1)},
       }) {
    expect_accuracy(range);
  }
}

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

struct WholeOrderRow {
  int n;
  double j_low, y_low;    // x <= n, relative
  double j_high, y_high;  // x > n, absolute
  double k;
};

TEST(Bessel, WholeOrdersKeepTheFiguresOfOrdersZeroAndOne) {
  const WholeOrderRow rows[] = {
      {2, 5.1e-7, 9.4e-9, 5.83e-9, 1.44e-8, 1.3e-7},
      {3, 4.6e-7, 1.24e-8, 4.6e-9, 1.74e-8, 1.4e-7},
      {7, 9.9e-10, 4.6e-8, 6.7e-9, 1.9e-8, 7.7e-8},
      {12, 2.1e-11, 2.8e-8, 2.5e-10, 2.3e-10, 2.9e-8},
      {44, 1e-14, 2.8e-8, 1.8e-10, 1.5e-10, 2.4e-8},
  };
  for (const auto& [n, j_low, y_low, j_high, y_high, k] : rows) {
    SCOPED_TRACE(n);
    const Routine j = of_order(n, math_func_bessj);
    const Routine y = of_order(n, math_func_bessy);
    const double above = std::nextafter(n, 1e9);
    expect_accuracy(
        {"J low", 0.1, 1.0 * n, kRelative, j_low, n < 40 ? kMethod : kRounding, j, exact_j(n)});
    expect_accuracy({"Y low", 0.1, 1.0 * n, kRelative, y_low, kMethod, y, exact_y(n)});
    expect_accuracy({"J high", above, n + 100.0, kAbsolute, j_high, kMethod, j, exact_j(n)});
    expect_accuracy({"Y high", above, n + 100.0, kAbsolute, y_high, kMethod, y, exact_y(n)});
    expect_accuracy(
        {"K", 0.3, 600.0, kRelative, k, kMethod, of_order(n, math_func_bessk), exact_k(n)});
    // The sign of x comes back for odd orders.
    expect_accuracy({"J below 0", -1.0 * n, -0.1, kRelative, j_low, kRounding, j, exact_j(n)});
    expect_accuracy(
        {"J far below 0", -100.0, -1.1 * n, kAbsolute, j_high, kRounding, j, exact_j(n)});
  }
}

// The recurrence of I starts at an order that doesn't know x. Nothing is to mend that.
TEST(Bessel, WholeOrdersOfIFailAtLargeX) {
  for (const auto& [n, from, to, error] : {std::tuple{2, 0.1, 10.0, 3.3e-8},
                                           {2, 100.0, 700.0, 2.6e-3},
                                           {3, 100.0, 700.0, 4.9e-1},
                                           {5, 100.0, 700.0, 2.1e-1},
                                           {5, -700.0, -100.0, 2.1e-1},
                                           {12, 100.0, 700.0, 3.7e-4},
                                           {24, 0.1, 700.0, 4.7e-7}}) {
    SCOPED_TRACE(n);
    expect_accuracy(
        {"I", from, to, kRelative, error, kMethod, of_order(n, math_func_bessi), exact_i(n)});
  }
}

// What is scaled away ends as 0, and not before it has to.
TEST(Bessel, WholeOrdersFadeWhereTheReferenceDoes) {
  TextBuf err;
  for (int n = 100; n < 220; ++n) {
    SCOPED_TRACE(n);
    for (const auto& [value, exact] : {std::pair{math_func_bessj(n, 1.0, err), exact_j(n)(1.0L)},
                                       std::pair{math_func_bessi(n, 1.0, err), exact_i(n)(1.0L)}}) {
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
