#include "numerics/gamma.h"

#include <gtest/gtest.h>

#include <boost/math/special_functions/beta.hpp>
#include <boost/math/special_functions/erf.hpp>
#include <boost/math/special_functions/gamma.hpp>
#include <cmath>
#include <limits>
#include <string>

#include "numerics/accuracy.h"

namespace quantiverse {
namespace {

using Real = long double;
using enum Error;
using enum Source;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

#define GAMMLN "ERROR: x must be > 0 in in routine math_func_gammln().\n"
#define GSER_LIMIT "ERROR: a too large, ITMAX too small routine math_func_gser().\n"
#define GCF_LIMIT "ERROR:  a too large, ITMAX too small in in routine math_func_gcf().\n"
#define BETACF_LIMIT "ERROR:  a or b too big or MAXIT too small in routine math_func_betacf().\n"

Real reference_gammln(Real x) { return boost::math::lgamma(x); }

TEST(Gamma, LogGammaIsAsAccurateAsItsSeries) {
  const Routine gamma = [](double x, TextBuf& err) { return std::exp(math_func_gammln(x, err)); };
  const Reference reference = [](Real x) { return boost::math::tgamma(x); };
  for (const Range& range : {
           Range{"near 0", 1e-300, 1e-3, kRelative, 2.5e-16, kRounding, math_func_gammln,
                 reference_gammln},
           Range{"zeros", 0.5, 3.0, kAbsolute, 6e-14, kRounding, math_func_gammln,
                 reference_gammln},
           Range{"middle", 10.0, 170.0, kAbsolute, 1.34e-10, kMethod, math_func_gammln,
                 reference_gammln},
           Range{"large", 170.0, 1e4, kAbsolute, 2.1e-10, kMethod, math_func_gammln,
                 reference_gammln},
           Range{"huge", 1e4, 2.5e305, kRelative, 2.5e-15, kRounding, math_func_gammln,
                 reference_gammln},
           Range{"gamma, small", 1e-3, 10.0, kRelative, 4.9e-13, kMethod, gamma, reference},
           Range{"gamma, large", 10.0, 171.0, kRelative, 1.34e-10, kMethod, gamma, reference},
       }) {
    expect_accuracy(range);
  }
}

// Both functions on both sides of x = a + 1, where the routine underneath changes. The series
// gives Q, and the fraction P, as 1 minus the other one: the same absolute error.
TEST(Gamma, IncompleteGammaStopsAtSevenFigures) {
  const struct {
    double a;
    double series;       // absolute, of P and Q
    double fraction, q;  // absolute of P, relative of Q
  } rows[] = {
      {0.01, 2.6e-8, 1.1e-9, 5.05e-7},  {0.5, 2.54e-8, 2.23e-8, 2.91e-7},
      {2.5, 5.35e-8, 1.42e-8, 6.9e-8},  {50.0, 1.55e-7, 2.39e-8, 5.8e-8},
      {200.0, 3.6e-7, 3.46e-8, 8.7e-8},
  };
  for (const auto& row : rows) {
    const double a = row.a;
    SCOPED_TRACE(a);
    const Routine p = [a](double x, TextBuf& err) { return math_func_gammp(a, x, err); };
    const Routine q = [a](double x, TextBuf& err) { return math_func_gammq(a, x, err); };
    const Reference exact_p = [a](Real x) { return boost::math::gamma_p(Real{a}, x); };
    const Reference exact_q = [a](Real x) { return boost::math::gamma_q(Real{a}, x); };
    const double middle = a + 1.0;
    const double below = std::nextafter(middle, 0.0);
    const double end = 4.0 * a + 20.0;
    expect_accuracy({"P series", 1e-4, below, kAbsolute, row.series, kMethod, p, exact_p});
    expect_accuracy({"Q series", 1e-4, below, kAbsolute, row.series, kMethod, q, exact_q});
    expect_accuracy({"P fraction", middle, end, kAbsolute, row.fraction, kMethod, p, exact_p});
    expect_accuracy({"Q fraction", middle, end, kRelative, row.q, kMethod, q, exact_q});
  }
}

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

TEST(Gamma, ErrorFunctions) {
  const Reference erf = [](Real x) { return boost::math::erf(x); };
  const Reference erfc = [](Real x) { return boost::math::erfc(x); };
  for (const Range& range : {
           Range{"erf, tiny", 1e-150, 1e-3, kRelative, 1e-13, kRounding, math_func_erf, erf},
           Range{"erf", 1e-3, 6.0, kRelative, 3.55e-8, kMethod, math_func_erf, erf},
           Range{"erf, negative", -6.0, -0.01, kRelative, 3.5e-8, kMethod, math_func_erf, erf},
           Range{"erfc", 0.0, 26.0, kRelative, 2.9e-7, kMethod, math_func_erfc, erfc},
           Range{"erfc, negative", -6.0, 0.0, kAbsolute, 3.1e-8, kMethod, math_func_erfc, erfc},
       }) {
    expect_accuracy(range);
  }
  for (const double x : {0.3, 1.2247, 1.2248, 3.0, 30.0}) {
    TextBuf err;
    EXPECT_EQ(math_func_erf(-x, err), -math_func_erf(x, err));
    EXPECT_EQ(math_func_erfc(-x, err), 1.0 + math_func_erf(x, err));
  }
}

TEST(Gamma, BetaFunctions) {
  for (const auto& [z, largest] : {std::pair{1e-3, 1.2e-13}, {1.0, 1.7e-12}, {80.0, 4.9e-11}}) {
    SCOPED_TRACE(z);
    const double of = z;
    expect_accuracy({"B(z, w)", 1e-3, 80.0, kRelative, largest, kRounding,
                     [of](double w, TextBuf& err) { return math_func_beta(of, w, err); },
                     [of](Real w) { return boost::math::beta(Real{of}, w); }});
  }

  // Errors below and above the x where the fraction changes sides.
  const struct {
    double a, b, below, above;
  } rows[] = {
      {0.01, 0.5, 3.5e-8, 1.2e-9},    {0.5, 0.5, 1.8e-8, 1.8e-8},
      {2.0, 20.0, 1e-8, 1e-12},       {20.0, 0.5, 1.8e-8, 1.2e-8},
      {300.0, 100.0, 3.2e-8, 4.2e-8}, {0.01, 100.0, 1.2e-8, 8.7e-10},
      {5.0, 1000.0, 2.9e-8, 2e-13},   {1000.0, 1000.0, 4.8e-8, 4.8e-8},
  };
  for (const auto& row : rows) {
    const double a = row.a;
    const double b = row.b;
    SCOPED_TRACE(std::to_string(a) + ", " + std::to_string(b));
    const double middle = (a + 1.0) / (a + b + 2.0);
    const Routine routine = [=](double x, TextBuf& err) { return math_func_betai(a, b, x, err); };
    const Reference exact = [=](Real x) { return boost::math::ibeta(Real{a}, Real{b}, x); };
    const Source source = row.above < 1e-10 ? kRounding : kMethod;
    expect_accuracy({"below", middle * 1e-3, std::nextafter(middle, 0.0), kAbsolute, row.below,
                     kMethod, routine, exact});
    expect_accuracy({"above", middle, 1.0, kAbsolute, row.above, source, routine, exact});
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
