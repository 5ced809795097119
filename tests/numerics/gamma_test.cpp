#include "numerics/gamma.h"

#include <gtest/gtest.h>

#include <cmath>

#include "numerics/calls.h"

namespace quantiverse {
namespace {

#define GAMMLN "ERROR: x must be > 0 in in routine math_func_gammln().\n"
#define GSER_LIMIT "ERROR: a too large, ITMAX too small routine math_func_gser().\n"
#define GCF_LIMIT "ERROR:  a too large, ITMAX too small in in routine math_func_gcf().\n"
#define BETACF_LIMIT "ERROR:  a or b too big or MAXIT too small in routine math_func_betacf().\n"

TEST(Gamma, SeriesEndsStrictlyBelowAPlusOne) {
  for (const double a : {0.5, 3.25, 40.0}) {
    for (const double x : {a + 1.0, std::nextafter(a + 1.0, 0.0)}) {
      TextBuf err;
      double gamser = 0.0, gammcf = 0.0, gln_series = 0.0, gln_fraction = 0.0;
      math_func_gser(gamser, a, x, gln_series, err);
      math_func_gcf(gammcf, a, x, gln_fraction, err);
      ASSERT_NE(gamser, 1.0 - gammcf);
      const bool fraction = x == a + 1.0;
      EXPECT_EQ(math_func_gammp(a, x, err), fraction ? 1.0 - gammcf : gamser);
      EXPECT_EQ(math_func_gammq(a, x, err), fraction ? gammcf : 1.0 - gamser);
      EXPECT_EQ(gln_series, math_func_gammln(a, err));
      EXPECT_EQ(gln_fraction, gln_series);
    }
  }
}

TEST(Gamma, ErrorFunctionsMirror) {
  for (const double x : {0.3, 1.2247, 1.2248, 3.0, 30.0}) {
    TextBuf err;
    EXPECT_EQ(math_func_erf(-x, err), -math_func_erf(x, err));
    EXPECT_EQ(math_func_erfc(-x, err), 1.0 + math_func_erf(x, err));
  }
}

TEST(Gamma, Digits) {
  expect_digits({
      {CALL(math_func_gammln(0.5, err)), 0.572364942924743, ""},
      {CALL(math_func_gammp(2.5, 3.0, err)), 0.6937810727337714, ""},
      {CALL(math_func_gammq(2.5, 7.0, err)), 0.015609415790266661, ""},
      {CALL(math_func_betai(2.5, 4.0, 0.3, err)), 0.3521975859067691, ""},
      {CALL(math_func_betai(2.5, 4.0, 0.6, err)), 0.8700269794802367, ""},
  });
}

TEST(Gamma, EndsOfTheDomain) {
  expect_calls({
      {CALL(math_func_gammp(2.5, 0.0, err)), 0.0, ""},
      {CALL(math_func_gammq(2.5, 0.0, err)), 1.0, ""},
      {CALL(math_func_erf(-0.0, err)), 0.0, ""},
      {CALL(math_func_erf(-1e154, err)), -1.0, ""},
      {CALL(math_func_betai(2.0, 3.0, 0.0, err)), 0.0, ""},
      {CALL(math_func_betai(2.0, 3.0, 1.0, err)), 1.0, ""},
      {CALL(math_func_gammln(5e-324, err)), kInf, ""},
      {CALL(math_func_gammln(1e306, err)), kInf, ""},
      {CALL(math_func_gammln(kInf, err)), kNan, ""},
      {CALL(math_func_gammln(kNan, err)), kNan, ""},
      {CALL(math_func_beta(kNan, 1.0, err)), kNan, ""},
      // The first denominator is 0 here, and 1e-30 stands for it.
      {CALL(math_func_betacf(1.0, 1.0, 1.0, err)), 1.0 / 1e-30, ""},
  });
}

TEST(Gamma, RefusedArguments) {
  expect_calls({
      {CALL(math_func_gammln(0.0, err)), 0.0, GAMMLN},
      {CALL(math_func_gammln(-kInf, err)), 0.0, GAMMLN},
      {CALL(math_func_gammp(-1.0, -1.0, err)), 0.0,
       "ERROR: x must be >= 0.0 in in routine math_func_gammp().\n"},
      {CALL(math_func_gammp(0.0, 0.0, err)), 0.0,
       "ERROR: a must be > 0.0 in in routine math_func_gammp().\n"},
      {CALL(math_func_gammq(-1.0, -1.0, err)), 0.0,
       "ERROR: x must be >= 0.0 in in routine math_func_gammq().\n"},
      {CALL(math_func_gammq(0.0, 0.0, err)), 0.0,
       "ERROR: a must be > 0.0 in in routine math_func_gammq().\n"},
      {CALL(math_func_betai(-1.0, 1.0, -0.1, err)), 0.0,
       "ERROR:  x must be >= 0 in routine math_func_betai().\n"},
      {CALL(math_func_betai(-1.0, 1.0, 1.1, err)), 0.0,
       "ERROR:  x must be <= 1 in routine math_func_betai().\n"},
      // A refused argument counts as a logarithm of 0: B(-3, 1) = exp(0 + 0 - 0).
      {CALL(math_func_beta(-3.0, 1.0, err)), 1.0, GAMMLN GAMMLN},
      {CALL(math_func_beta(-1.0, -2.0, err)), 1.0, GAMMLN GAMMLN GAMMLN},
      {CALL(math_func_betai(-1.0, -2.0, 0.5, err)), 1.0, GAMMLN GAMMLN GAMMLN BETACF_LIMIT},
      // At the ends of x the logarithms are not taken, so nothing refuses a and b.
      {CALL(math_func_betai(-1.0, -2.5, 0.0, err)), 1.0, BETACF_LIMIT},
      {CALL(math_func_betai(-1.0, -2.0, 1.0, err)), 1.0, BETACF_LIMIT},
      {CALL(math_func_betai(-0.5, 2.0, 0.0, err)), 0.0, ""},
  });
}

TEST(Gamma, LimitOfIterations) {
  expect_calls({
      {CALL(math_func_gammp(1000.0, 1000.0, err)), 0.0, GSER_LIMIT},
      {CALL(math_func_gammq(1000.0, 1000.0, err)), 1.0, GSER_LIMIT},
      {CALL(math_func_gammp(1e5, 1e5 + 1.0, err)), 1.0, GCF_LIMIT},
      {CALL(math_func_gammq(1e5, 1e5 + 1.0, err)), 0.0, GCF_LIMIT},
      {CALL(math_func_gammp(kInf, 1.0, err)), 0.0, GSER_LIMIT},
      {CALL(math_func_gammq(1.0, kNan, err)), 0.0, GCF_LIMIT},
      {CALL(math_func_erf(-1e155, err)), -1.0, GCF_LIMIT},
      {CALL(math_func_erfc(-kInf, err)), 2.0, GCF_LIMIT},
      {CALL(math_func_betai(1e5, 1e5, 0.5, err)), 1.0, BETACF_LIMIT},
      {CALL(math_func_betai(2.0, 1.0, kNan, err)), kNan, BETACF_LIMIT},
      {CALL(math_func_betai(kInf, 1.0, 0.5, err)), kNan, BETACF_LIMIT},
  });
}

TEST(Gamma, WhatAFailureLeavesInTheResults) {
  TextBuf err;
  double result = 7.0;
  double gln = 7.0;
  math_func_gser(result, 1000.0, 1000.0, gln, err);
  EXPECT_EQ(result, 0.0);
  EXPECT_EQ(gln, math_func_gammln(1000.0, err));  // the series keeps it, the fraction doesn't

  result = gln = 7.0;
  math_func_gcf(result, 1e5, 1e5, gln, err);
  EXPECT_EQ(result, 0.0);
  EXPECT_EQ(gln, 0.0);
  EXPECT_EQ(err.text(), GSER_LIMIT GCF_LIMIT);  // what was there stays

  err.clear_text();
  result = gln = 7.0;
  math_func_gser(result, -2.0, -1.0, gln, err);
  EXPECT_EQ(result, 0.0);
  EXPECT_EQ(gln, 0.0);
  EXPECT_EQ(err.text(), GAMMLN "ERROR: x must be >= 0.0 in in routine math_func_gser().\n");
}

}  // namespace
}  // namespace quantiverse
