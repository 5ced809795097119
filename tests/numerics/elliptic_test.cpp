#include "numerics/elliptic.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <boost/math/special_functions/ellint_1.hpp>
#include <boost/math/special_functions/ellint_3.hpp>
#include <boost/math/special_functions/ellint_rj.hpp>
#include <boost/math/special_functions/jacobi_elliptic.hpp>
#include <cmath>
#include <numbers>
#include <string_view>
#include <tuple>

#include "numerics/calls.h"

namespace quantiverse {
namespace {

using Real = long double;
using std::numbers::pi;

// The constant term of RC is 12, and what rests on it stays as it is.
TEST(Carlson, RcIsTwelvefold) {
  TextBuf err;
  EXPECT_NEAR(math_func_carlsons_rc(1.0, 2.0, err), 3.0 * pi, 4e-6);
  EXPECT_NEAR(math_func_carlsons_rc(0.0, 0.25, err), 12.0 * pi, 2e-5);
  EXPECT_EQ(math_func_carlsons_rc(4.0, 4.0, err), 6.0);
}

struct RjRow {
  double x, y, z, p;
  int rounds;  // of duplication, which z and p alone decide
};

// RJ is three times a sum over RC, twelvefold as that is, and a rest that enters once: RJ of the
// arguments after the last round.
TEST(Carlson, RjIsTwelvefoldButForItsLastRound) {
  const RjRow rows[] = {
      {1, 2, 3, 4, 5},
      {0.1, 5, 2, 0.5, 5},
      {0, 2, 3, 0.01, 6},
      {2, 0, 1e4, 1e-3, 8},
      {1e5, 2, 3, 3, 7},
      {1, 1, 1, 1, 1},
      {1, 1, 1, 1.0095, 1},
      {1.006, 0.994, 1.003, 1.003, 1},
      {1.006, 1.006, 1, 1.006, 1},
  };
  for (const auto& [x, y, z, p, rounds] : rows) {
    SCOPED_TRACE(testing::Message() << x << ' ' << y << ' ' << z << ' ' << p);
    TextBuf err;
    Real a[4] = {x, y, z, p};
    Real share = 1;
    Real sum = 0;
    for (int round = 0; round < rounds; ++round) {
      const Real roots = std::sqrt(a[0]) + std::sqrt(a[1]) + std::sqrt(a[2]);
      const Real step = (roots * roots - a[0] - a[1] - a[2]) / 2;
      const Real alpha = a[3] * roots + std::sqrt(a[0] * a[1] * a[2]);
      const Real beta = a[3] + step;
      sum += share * math_func_carlsons_rc(static_cast<double>(alpha * alpha),
                                           static_cast<double>(a[3] * beta * beta), err);
      for (Real& value : a) value = (value + step) / 4;
      share /= 4;
    }
    const Real rest = share * boost::math::ellint_rj(a[0], a[1], a[2], a[3]);
    const auto expected = static_cast<double>(3 * sum + rest);
    EXPECT_NEAR(math_func_carlsons_rj(x, y, z, p, err) / expected, 1.0, 2e-15);
    const Real whole = boost::math::ellint_rj(Real{x}, Real{y}, Real{z}, Real{p});
    EXPECT_NEAR(expected / static_cast<double>(12 * whole - 11 * rest), 1.0, 4e-7);
    EXPECT_EQ(err.text(), "");
  }
}

#define RC_NEGATIVE "ERROR:  x must be >= 0 in routine math_func_carlsons_rc().\n"
#define RC_ZERO "ERROR:  y cannot be zero in routine math_func_carlsons_rc().\n"
#define RC_SMALL "ERROR:  x + fabs(y) too small in routine math_func_carlsons_rc().\n"
#define RC_BIG "ERROR:  x + fabs(y) too big in routine math_func_carlsons_rc().\n"
#define RC_RANGE "ERROR:  bad arg range in routine math_func_carlsons_rc().\n"
#define RD_NEGATIVE "ERROR:  x or y must be >= 0 in routine math_func_carlsons_rd().\n"
#define RD_SMALL "ERROR:  x + y or z too small in routine math_func_carlsons_rd().\n"
#define RD_BIG "ERROR:  x, y, z too big in routine math_func_carlsons_rd().\n"
#define RF_NEGATIVE "ERROR:  x, y, and z  >= 0 in routine math_func_carlsons_rf().\n"
#define RF_SMALL "ERROR:  x or y or z too small in routine math_func_carlsons_rf().\n"
#define RF_BIG "ERROR:  x or y or z too big in routine math_func_carlsons_rf().\n"
#define RJ_NEGATIVE "ERROR:  x, y, and z must be >= 0 in routine math_func_carlsons_rj().\n"
#define RJ_ARGUMENT "ERROR:  arg error in routine math_func_carlsons_rj().\n"

// Each test of the arguments at its limit, and the earlier of two that fail.
TEST(Carlson, RefusalsComeInTheirOrder) {
  expect_calls({
      {CALL(math_func_carlsons_rc(-1.0, 0.0, err)), 0.0, RC_NEGATIVE},
      {CALL(math_func_carlsons_rc(0.0, 0.0, err)), 0.0, RC_ZERO},
      {CALL(math_func_carlsons_rc(1e-39, -1e-39, err)), 0.0, RC_SMALL},
      {CALL(math_func_carlsons_rc(3e37, 1e30, err)), 0.0, RC_BIG},
      {CALL(math_func_carlsons_rc(0.01, -1e38, err)), 0.0, RC_BIG},
      {CALL(math_func_carlsons_rc(0.01, -1.73e19, err)), 0.0, RC_RANGE},
      {CALL(math_func_carlsons_rc(0.010281960000000001, -1.73e19, err)), kNan, ""},
      {CALL(math_func_carlsons_rc(0.0, -1.73e19, err)), kNan, ""},
      {CALL(math_func_carlsons_rc(0.01, -1.72e19, err)), kNan, ""},
      {CALL(math_func_carlsons_rc(1.0, -2.0, err)), kNan, ""},
      {CALL(math_func_carlsons_rc(kNan, 1.0, err)), kNan, ""},
      {CALL(math_func_carlsons_rc(kInf, 1.0, err)), 0.0, RC_BIG},
      {CALL(math_func_carlsons_rd(1.0, -1.0, 0.0, err)), 0.0, RD_NEGATIVE},
      {CALL(math_func_carlsons_rd(0.0, 0.0, 1e30, err)), 0.0, RD_SMALL},
      {CALL(math_func_carlsons_rd(1.0, 1.0, 0.0, err)), 0.0, RD_SMALL},
      {CALL(math_func_carlsons_rd(1.0, 1.0, -1.0, err)), 0.0, RD_SMALL},
      {CALL(math_func_carlsons_rd(1.0, 4.6e21, 1.0, err)), 0.0, RD_BIG},
      {CALL(math_func_carlsons_rd(1.0, 1.0, kInf, err)), 0.0, RD_BIG},
      {CALL(math_func_carlsons_rd(1.0, kNan, 1.0, err)), kNan, ""},
      {CALL(math_func_carlsons_rf(-1.0, 0.0, 1e38, err)), 0.0, RF_NEGATIVE},
      {CALL(math_func_carlsons_rf(0.0, 1e-38, 1e38, err)), 0.0, RF_SMALL},
      {CALL(math_func_carlsons_rf(1.0, 3.1e37, 1.0, err)), 0.0, RF_BIG},
      {CALL(math_func_carlsons_rf(1.0, 1.0, kNan, err)), kNan, ""},
      {CALL(math_func_carlsons_rj(-1.0, 0.0, 0.0, 0.0, err)), 0.0, RJ_NEGATIVE},
      {CALL(math_func_carlsons_rj(1.0, 1.0, 1.0, -2e-13, err)), 0.0, RJ_ARGUMENT},
      {CALL(math_func_carlsons_rj(1.0, 1e-13, 1e-13, 1.0, err)), 0.0, RJ_ARGUMENT},
      {CALL(math_func_carlsons_rj(1.0, 1.0, 1e12, 1.0, err)), 0.0, RJ_ARGUMENT},
      {CALL(math_func_carlsons_rj(1.0, 1.0, 1.0, -1e12, err)), 0.0, RJ_ARGUMENT},
      {CALL(math_func_carlsons_rj(1.0, 2.0, 3.0, -1.0, err)), kNan, ""},
      {CALL(math_func_carlsons_rj(1.0, 2.0, 3.0, kNan, err)), kNan, ""},
      // What RJ lets pass, RC refuses once a round.
      {CALL(math_func_carlsons_rj(kInf, 1.0, 1.0, 1.0, err)), kNan, RC_BIG},
  });
  TextBuf err;
  EXPECT_GT(math_func_carlsons_rf(0.0, 1.5e-38, 3e37, err), 0.0);
  EXPECT_GT(math_func_carlsons_rd(0.0, 1e-25, 4.5e21, err), 0.0);
  EXPECT_GT(math_func_carlsons_rc(0.0, 1.69e-38, err), 0.0);
  EXPECT_GT(math_func_carlsons_rj(1.0, 1.2e-13, 1.3e-13, 2.5e-13, err), 0.0);
  EXPECT_GT(math_func_carlsons_rj(1e11, 1e11, 9e11, 9e11, err), 0.0);
  EXPECT_EQ(err.text(), "");
}

// Nothing in RJ looks at the size of x, nor of a large y.
TEST(Carlson, RjEndsOnArgumentsItDoesNotTest) {
  const double rows[][4] = {{1e30, 1, 1, 1}, {1e308, 1, 1, 1}, {1, 1e308, 1, 1}, {0, 0, 3, 1},
                            {0, 0, 3, -1},   {0, 3, 0, 1},     {1e30, 1, 2, -1}};
  for (const auto& [x, y, z, p] : rows) {
    SCOPED_TRACE(testing::Message() << x << ' ' << y << ' ' << z << ' ' << p);
    TextBuf err;
    math_func_carlsons_rj(x, y, z, p, err);
    EXPECT_FALSE(err.is_empty_text());
    EXPECT_EQ(err.text().find("carlsons_rj"), std::string_view::npos);
    EXPECT_LT(err.text().size(), 100'000U);
  }
}

TEST(Legendre, MirrorsAndFoldsItsArgument) {
  for (const double k : {0.0, -0.9, 0.999999}) {
    TextBuf err;
    EXPECT_EQ(math_func_ellf(-0.7, k, err), -math_func_ellf(0.7, k, err));
    EXPECT_EQ(math_func_ellpi(0.7, 0.0, k, err), math_func_ellf(0.7, k, err));
  }
  TextBuf err;
  EXPECT_NEAR(math_func_ellf(pi / 2, 0.0, err), pi / 2, 1e-15);
  // Folded back: no multiple of the quarter period is added.
  EXPECT_NEAR(math_func_elle(3.0, 0.5, err), math_func_elle(pi - 3.0, 0.5, err), 1e-15);
  EXPECT_EQ(err.text(), "");
}

// The part of the third kind that RJ makes is as much too large as RJ is. The reference has the
// other sign of n.
TEST(Legendre, TheThirdKindInheritsFromRj) {
  for (const auto& [phi, n, k] :
       {std::tuple{0.7, 0.5, 0.3}, {1.2, -0.8, 0.9}, {-0.4, 3.0, 0.0}, {1.5, 0.1, -0.5}}) {
    SCOPED_TRACE(n);
    TextBuf err;
    const double s = std::sin(phi);
    const double c2 = std::cos(phi) * std::cos(phi);
    const double q = 1.0 - k * k * s * s;
    const double p = 1.0 + n * s * s;
    const double excess =
        math_func_carlsons_rj(c2, q, 1.0, p, err) / boost::math::ellint_rj(c2, q, 1.0, p);
    const double first = boost::math::ellint_1(k, phi);
    const double third = boost::math::ellint_3(k, -n, phi);
    EXPECT_NEAR(math_func_ellpi(phi, n, k, err), first + excess * (third - first), 1e-13);
    EXPECT_GT(excess, 11.0);
    EXPECT_EQ(err.text(), "");
  }
}

TEST(Legendre, ShowsTheMessagesOfEachFormThatRefuses) {
  TextBuf silent;
  const double first = math_func_ellf(pi / 2, 0.5, silent);
  const double first_at_1 = math_func_ellf(pi / 2, 1.0, silent);
  expect_calls({
      {CALL(math_func_ellf(1.0, 2.0, err)), 0.0, RF_NEGATIVE},
      {CALL(math_func_elle(1.0, 2.0, err)), 0.0, RF_NEGATIVE RD_NEGATIVE},
      {CALL(math_func_ellpi(1.0, 1.0, 2.0, err)), 0.0, RF_NEGATIVE RJ_NEGATIVE},
      {CALL(math_func_ellpi(pi / 2, -1.0, 0.5, err)), first, RJ_ARGUMENT},
      {CALL(math_func_elle(pi / 2, 1.0, err)), first_at_1, RD_SMALL},
      {CALL(math_func_ellf(kInf, 0.5, err)), kNan, ""},
      {CALL(math_func_elle(0.5, kNan, err)), kNan, ""},
  });
}

struct Jacobi {
  double sn, cn, dn;
};

Jacobi jacobi(double u, double emmc) {
  Jacobi f{};
  TextBuf err;
  math_func_sncndn(u, emmc, f.sn, f.cn, f.dn, err);
  EXPECT_EQ(err.text(), "");
  return f;
}

TEST(JacobiFunctions, AreElementaryAtTheEndsOfTheParameter) {
  for (const double u : {-2.0, 0.0, 0.3, 40.0}) {
    const auto [sn, cn, dn] = jacobi(u, 0.0);
    EXPECT_EQ(std::tuple(sn, cn, dn), std::tuple(std::tanh(u), 1.0 / std::cosh(u), cn));
    const Jacobi at1 = jacobi(u, 1.0);
    EXPECT_NEAR(at1.sn, std::sin(u), 1e-15);
    EXPECT_NEAR(at1.cn, std::cos(u), 1e-15);
    EXPECT_EQ(at1.dn, 1.0);
  }
}

TEST(JacobiFunctions, EndOnEveryArgument) {
  for (const double bad : {kInf, -kInf, kNan}) {
    EXPECT_TRUE(std::isnan(jacobi(bad, 0.5).sn));
    EXPECT_TRUE(std::isnan(jacobi(1.0, bad).sn));
  }
}

// A negative one is turned over to -emmc (1 - emmc), where -emmc / (1 - emmc) would be right.
TEST(JacobiFunctions, NegativeParameterIsTurnedOverTheWrongWay) {
  double error = 0.0;
  for (const double emmc : {-0.5, -0.2}) {
    const double d = 1.0 - emmc;
    for (double u = -5.0; u <= 5.0; u += 0.1) {
      const auto [sn, cn, dn] = jacobi(u, emmc);
      Real other_cn = 0;
      Real other_dn = 0;
      const Real other_sn = boost::math::jacobi_elliptic(
          std::sqrt(1.0L + emmc * d), Real{u * std::sqrt(d)}, &other_cn, &other_dn);
      for (const Real off : {sn - other_sn / std::sqrt(d), cn - other_dn, dn - other_cn}) {
        error = std::max(error, static_cast<double>(std::fabs(off)));
      }
    }
  }
  EXPECT_LE(error, 1e-12);
}

}  // namespace
}  // namespace quantiverse
