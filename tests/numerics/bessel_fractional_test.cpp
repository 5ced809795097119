#include <gtest/gtest.h>

#include <boost/math/special_functions/airy.hpp>
#include <boost/math/special_functions/bessel_prime.hpp>
#include <boost/math/special_functions/gamma.hpp>
#include <cmath>
#include <limits>
#include <tuple>

#include "numerics/accuracy.h"
#include "numerics/bessel.h"
#include "numerics/bessel_reference.h"

namespace quantiverse {
namespace {

using Real = long double;
using enum Error;
using enum Source;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
const double kBelow2 = std::nextafter(2.0, 0.0);

struct FractionalRow {
  double nu;
  double j, y, i, k;          // 0.05 to 2: I and K relative, J and Y absolute; Y from 0.5
  double j_2, y_2, i_2, k_2;  // 2 to 50
};

TEST(FractionalBessel, ReachFullPrecision) {
  const FractionalRow rows[] = {
      {1.0 / 3, 2e-15, 5e-15, 3e-15, 8e-14, 5e-15, 5e-15, 2e-15, 2e-15},
      {0.5, 3e-15, 4e-15, 2e-14, 1e-13, 5e-15, 5e-15, 2e-15, 2e-15},
      {1.5, 2e-15, 1e-14, 2e-14, 6e-14, 5e-15, 5e-15, 2e-15, 2e-15},
      {2.7, 1e-15, 4e-14, 5e-15, 6e-15, 5e-15, 5e-15, 2e-15, 2e-15},
      {-0.4, 5e-15, 5e-15, 1e-14, 8e-14, 5e-15, 5e-15, 2e-15, 2e-15},
      {-2.7, 2e-11, 4e-12, 5e-14, 6e-15, 5e-15, 5e-15, 4e-15, 2e-15},
  };
  for (const auto& [nu, j, y, i, k, j_2, y_2, i_2, k_2] : rows) {
    SCOPED_TRACE(nu);
    const auto check = [](const char* name, double from, double to, Error error, double largest,
                          const Routine& routine, const Reference& exact) {
      expect_accuracy({name, from, to, error, largest, kRounding, routine, exact}, 400);
    };
    const Routine bessj = of_order(nu, math_func_bessj_frac);
    const Routine bessy = of_order(nu, math_func_bessy_frac);
    const Routine bessi = of_order(nu, math_func_bessi_frac);
    const Routine bessk = of_order(nu, math_func_bessk_frac);
    check("J", 0.05, kBelow2, kAbsolute, j, bessj, exact_j(nu));
    check("Y", 0.5, kBelow2, kAbsolute, y, bessy, exact_y(nu));
    check("I", 0.05, kBelow2, kRelative, i, bessi, exact_i(nu));
    check("K", 0.05, kBelow2, kRelative, k, bessk, exact_k(nu));
    check("J from 2", 2.0, 50.0, kAbsolute, j_2, bessj, exact_j(nu));
    check("Y from 2", 2.0, 50.0, kAbsolute, y_2, bessy, exact_y(nu));
    check("I from 2", 2.0, 50.0, kRelative, i_2, bessi, exact_i(nu));
    check("K from 2", 2.0, 50.0, kRelative, k_2, bessk, exact_k(nu));
  }
}

// Far out, at high orders, and the derivatives that only the routines underneath give.
TEST(FractionalBessel, FarOutAndTheirDerivatives) {
  const auto derivative = [](auto f, int which) {
    return Routine([f, which](double x, TextBuf& err) {
      double out[4];
      f(x, 2.7, out[0], out[1], out[2], out[3], err);
      return out[which];
    });
  };
  const Routine j = of_order(10.3, math_func_bessj_frac);
  const Routine y = of_order(10.3, math_func_bessy_frac);
  for (const Range& range : {
           Range{"J to 2000", 200.0, 2000.0, kAbsolute, 1.5e-12, kRounding, j, exact_j(10.3)},
           Range{"Y to 9800", 2000.0, 9800.0, kAbsolute, 1.6e-11, kRounding, y, exact_y(10.3)},
           // The series of K cancels up to its end at 2; the fraction takes over there.
           Range{"K below 2", 1.9, kBelow2, kRelative, 7.8e-14, kMethod,
                 of_order(1.0 / 3, math_func_bessk_frac), exact_k(1.0 / 3)},
           Range{"K at 2", 2.0, 2.1, kRelative, 2e-15, kRounding,
                 of_order(1.0 / 3, math_func_bessk_frac), exact_k(1.0 / 3)},
           Range{"J of 50.5", 0.1, 50.0, kRelative, 4e-13, kRounding,
                 of_order(50.5, math_func_bessj_frac), exact_j(50.5)},
           Range{"I of 50.5", 0.1, 700.0, kRelative, 3e-12, kRounding,
                 of_order(50.5, math_func_bessi_frac), exact_i(50.5)},
           Range{"J'", 0.1, 20.0, kAbsolute, 3e-15, kRounding, derivative(math_func_bessjy, 2),
                 [](Real x) { return boost::math::cyl_bessel_j_prime(Real{2.7}, x); }},
           Range{"Y'", 1.0, 20.0, kAbsolute, 1e-13, kRounding, derivative(math_func_bessjy, 3),
                 [](Real x) { return boost::math::cyl_neumann_prime(Real{2.7}, x); }},
           Range{"I'", 0.1, 20.0, kRelative, 5e-15, kRounding, derivative(math_func_bessik, 2),
                 [](Real x) { return boost::math::cyl_bessel_i_prime(Real{2.7}, x); }},
           Range{"K'", 0.1, 20.0, kRelative, 3e-15, kRounding, derivative(math_func_bessik, 3),
                 [](Real x) { return boost::math::cyl_bessel_k_prime(Real{2.7}, x); }},
       }) {
    expect_accuracy(range, 400);
  }
}

#define JY_X "ERROR:   x must be > 0 in math_func_bessjy().\n"
#define JY_NU "ERROR:   nu must be >= 0 in math_func_bessjy().\n"
#define JY_CF1 "ERROR: x too large in math_func_bessjy(); try asymptotic expansion.\n"
#define JY_SERIES "ERROR: series failed to converge in math_func_bessjy().\n"
#define JY_CF2 "ERROR: cf2 failed to converge in math_func_bessjy().\n"
#define IK_X "ERROR:   x must be > 0 in math_func_bessik().\n"
#define IK_NU "ERROR:   nu must be >= 0 in math_func_bessik().\n"
#define IK_CF1 "ERROR: x too large in math_func_bessik(); try asymptotic expansion.\n"
#define IK_SERIES "ERROR: series failed to converge in math_func_bessik().\n"
#define IK_CF2 "ERROR: cf2 failed to converge in math_func_bessik().\n"
#define CHEBEV "ERROR:  x not in range in routine math_func_bes_chebev().\n"

TEST(FractionalBessel, FailuresAreMessagesAndZeros) {
  struct Row {
    decltype(&math_func_bessjy) routine;
    double x, nu;
    const char* message;
  };
  const Row rows[] = {
      {math_func_bessjy, 0.0, 2.5, JY_X},
      {math_func_bessjy, -1.0, -2.5, JY_X},
      {math_func_bessjy, 1.0, -0.5, JY_NU},
      {math_func_bessjy, 1e4, 0.5, JY_CF1},
      {math_func_bessjy, kInf, 0.5, JY_CF1},
      {math_func_bessjy, kNan, 0.5, JY_CF1},
      {math_func_bessjy, 1.0, kNan, JY_CF1},
      {math_func_bessjy, 1.0, 3e9 + 0.5, CHEBEV CHEBEV JY_SERIES},
      {math_func_bessjy, 5e8, 1e15 + 0.5, JY_CF2},
      {math_func_bessik, 0.0, 2.5, IK_X},
      {math_func_bessik, -1.0, -2.5, IK_X},
      {math_func_bessik, 1.0, -0.5, IK_NU},
      {math_func_bessik, 3e6, 0.5, IK_CF1},
      {math_func_bessik, kInf, 0.5, IK_CF1},
      {math_func_bessik, kNan, 0.5, IK_CF1},
      {math_func_bessik, 1.0, 3e9 + 0.5, CHEBEV CHEBEV IK_SERIES},
      {math_func_bessik, 5e8, 2147483647.5, IK_CF2},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.message);
    double out[4] = {1.0, 1.0, 1.0, 1.0};
    TextBuf err;
    row.routine(row.x, row.nu, out[0], out[1], out[2], out[3], err);
    EXPECT_EQ(err.text(), row.message);
    for (const double value : out) EXPECT_EQ(value, 0.0);
  }
  expect_calls({
      {CALL(math_func_bessj_frac(-2.5, 0.0, err)), 0.0, JY_X},
      {CALL(math_func_bessi_frac(-2.5, -1.0, err)), 0.0, IK_X},
      {CALL(math_func_bessk_frac(2.5, 0.0, err)), 0.0, IK_X},
      {CALL(math_func_bessy_frac(2.5, 2e5, err)), 0.0, JY_CF1},
      // Overflow on the way down has no message.
      {CALL(math_func_bessj_frac(1e9 + 0.5, 1.0, err)), kNan, ""},
      {CALL(math_func_bessi_frac(1e9 + 0.5, 1.0, err)), kNan, ""},
      {CALL(math_func_bessk_frac(1e9 + 0.5, 1.0, err)), kInf, ""},
      {CALL(math_func_bessk_frac(1e9 + 0.5, 800.0, err)), 0.0, ""},
      {CALL(math_func_bessy_frac(1e9 + 0.5, 1.0, err)), kNan, ""},
      {CALL(math_func_bessj_frac(2.2e9 + 0.5, 5e8, err)), kNan, ""},  // it need not come down to 0
  });
}

TEST(FractionalBessel, ChebyshevSeriesEndsAtItsInterval) {
  TextBuf err;
  const double c[] = {2.0, 3.0, 5.0};  // 1 + 3 T1 + 5 T2 of (x - 4) / 2
  EXPECT_EQ(math_func_bes_chebev(2.0, 6.0, c, 5.0, err), 1.0 + 3.0 * 0.5 + 5.0 * -0.5);
  EXPECT_EQ(math_func_bes_chebev(2.0, 6.0, c, 2.0, err), 1.0 - 3.0 + 5.0);
  EXPECT_EQ(err.text(), "");
  EXPECT_EQ(math_func_bes_chebev(2.0, 6.0, c, 6.5, err), 0.0);
  EXPECT_EQ(err.text(), CHEBEV);
}

TEST(FractionalBessel, GammaQuantities) {
  const auto quantity = [](int which) {
    return [which](double x, TextBuf& err) {
      double out[4];  // gam1, gam2, gampl, gammi
      math_func_beschb(x, out[0], out[1], out[2], out[3], err);
      return out[which];
    };
  };
  const auto plus = [](Real x) { return 1.0L / boost::math::tgamma(1.0L + x); };
  const auto minus = [](Real x) { return 1.0L / boost::math::tgamma(1.0L - x); };
  for (const Range& range : {
           Range{"gam1", -0.5, 0.5, kAbsolute, 9e-15, kRounding, quantity(0),
                 [=](Real x) { return (minus(x) - plus(x)) / (2 * x); }},
           Range{"gam2", -0.5, 0.5, kAbsolute, 3e-15, kRounding, quantity(1),
                 [=](Real x) { return (minus(x) + plus(x)) / 2; }},
           Range{"gampl", -0.5, 0.5, kAbsolute, 3.3e-15, kRounding, quantity(2), plus},
           Range{"gammi", -0.5, 0.5, kAbsolute, 3.3e-15, kRounding, quantity(3), minus},
       }) {
    expect_accuracy(range, 400);
  }
}

TEST(Airy, AgreesWithTheReferenceOnBothSides) {
  struct Row {
    Reference exact;
    double tiny_below, below, far_below;  // absolute: -10, -100, -600
    double above;                         // relative: up to 100
  };
  const Row rows[4] = {
      {[](Real x) { return boost::math::airy_ai(x); }, 3.2e-15, 1.5e-12, 2e-10, 2e-13},
      {[](Real x) { return boost::math::airy_bi(x); }, 3.2e-15, 1.5e-12, 2e-10, 2e-13},
      {[](Real x) { return boost::math::airy_ai_prime(x); }, 1.1e-14, 1.5e-11, 4.5e-9, 2e-13},
      {[](Real x) { return boost::math::airy_bi_prime(x); }, 1.1e-14, 1.5e-11, 4.5e-9, 2e-13},
  };
  for (int which = 0; which < 4; ++which) {
    SCOPED_TRACE(which);
    const Row& row = rows[which];
    const auto routine = [which](double x, TextBuf& err) {
      double out[4];
      math_func_airy(x, out[0], out[1], out[2], out[3], err);
      return out[which];
    };
    for (const auto& [from, to, error, largest] :
         {std::tuple{-10.0, -0.001, kAbsolute, row.tiny_below},
          {-100.0, -10.0, kAbsolute, row.below},
          {-600.0, -100.0, kAbsolute, row.far_below},
          {0.001, 100.0, kRelative, row.above},
          {0.0, 1.0, kRelative, row.above}}) {
      expect_accuracy({"Airy", from, to, error, largest, kRounding, routine, row.exact}, 400);
    }
  }
}

TEST(Airy, EndsOnEveryArgumentWithTwoMessages) {
  const auto ai = [](double x, TextBuf& err) {
    double out[4];
    math_func_airy(x, out[0], out[1], out[2], out[3], err);
    return out[0];
  };
  expect_calls({
      {"0", [ai](TextBuf& err) { return ai(0.0, err); }, 0.3550280538878172, ""},
      {"-650", [ai](TextBuf& err) { return ai(-650.0, err); }, 0.0, JY_CF1 JY_CF1},
      {"30000", [ai](TextBuf& err) { return ai(3e4, err); }, 0.0, IK_CF1 IK_CF1},
      {"1e-300", [ai](TextBuf& err) { return ai(1e-300, err); }, 0.0, IK_X IK_X},
      {"-inf", [ai](TextBuf& err) { return ai(-kInf, err); }, kNan, JY_CF1 JY_CF1},
      {"NaN", [ai](TextBuf& err) { return ai(kNan, err); }, kNan, ""},
  });
}

}  // namespace
}  // namespace quantiverse
