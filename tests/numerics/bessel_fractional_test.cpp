#include <gtest/gtest.h>

#include <boost/math/special_functions/airy.hpp>
#include <cmath>

#include "numerics/bessel.h"
#include "numerics/calls.h"

namespace quantiverse {
namespace {

// The order above has to tell the same derivatives.
TEST(FractionalBessel, DerivativesFitTheOrderAbove) {
  for (const double nu : {0.0, 0.5, 2.7, 10.3}) {
    for (const double x : {0.5, 1.9, 2.0, 5.0, 20.0}) {
      SCOPED_TRACE(testing::Message() << nu << ' ' << x);
      TextBuf err;
      double j, y, j1, y1, dj, dy, skip;
      math_func_bessjy(x, nu, j, y, dj, dy, err);
      math_func_bessjy(x, nu + 1, j1, y1, skip, skip, err);
      EXPECT_NEAR(dj, nu / x * j - j1, 1e-13 * (std::fabs(dj) + std::fabs(j1)));
      EXPECT_NEAR(dy, nu / x * y - y1, 1e-13 * (std::fabs(dy) + std::fabs(y1)));
      math_func_bessik(x, nu, j, y, dj, dy, err);
      math_func_bessik(x, nu + 1, j1, y1, skip, skip, err);
      EXPECT_NEAR(dj, nu / x * j + j1, 1e-12 * std::fabs(dj));
      EXPECT_NEAR(dy, nu / x * y - y1, 1e-12 * std::fabs(dy));
      EXPECT_EQ(err.text(), "");
    }
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

TEST(Airy, DerivativesAreThoseOfTheReference) {
  for (const double x : {-30.0, -2.5, -0.001, 0.0, 0.3, 4.0, 60.0}) {
    TextBuf err;
    double ai, bi, dai, dbi;
    math_func_airy(x, ai, bi, dai, dbi, err);
    EXPECT_NEAR(dai / boost::math::airy_ai_prime(x), 1.0, 1e-12) << x;
    EXPECT_NEAR(dbi / boost::math::airy_bi_prime(x), 1.0, 1e-12) << x;
    EXPECT_EQ(err.text(), "");
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
