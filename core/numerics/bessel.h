#pragma once

#include <span>

#include "text/text_buf.h"

// Bessel functions of whole and of fractional order, and the Airy functions.
//
// Whole orders come from approximations of seven to nine figures at orders 0 and 1 and recurrences
// above them; fractional orders from a series below x = 2 and continued fractions from there on,
// near full precision. So BesselJ of order 2 and of order 2.0000001 differ in the ninth figure.
// Errors are the largest against Boost.Math in extended precision. Those of J and Y are absolute,
// since they have zeros; those of I and K relative.
namespace quantiverse {

// --- Orders 0 and 1 ---------------------------------------------------------------------------
//
// No argument is tested: K and Y take the logarithm of x and divide by it as the arithmetic
// gives, NaN below 0. BesselJ of order 0 at 0 is 1.0000000028, the ratio of two constants.
// Errors for each range stand beside the coefficients: 5.6e-7 for I, 1.7e-7 for K, 5e-9 for J,
// 3.8e-8 for Y (1.7e-8 from x = 0.1 on).
double math_func_bessi0(double x);
double math_func_bessi1(double x);
double math_func_bessk0(double x);
double math_func_bessk1(double x);
double math_func_bessj0(double x);
double math_func_bessj1(double x);
double math_func_bessy0(double x);
double math_func_bessy1(double x);

// --- Whole orders -----------------------------------------------------------------------------
//
// Domain:   any n and x. Nothing is tested, and `err` is never touched. The order -2147483648,
//           which stands for every order that did not fit, has no opposite and gives NaN.
// Failure:  no messages. An overflow on the way up ends as an infinity in K and as NaN in Y. Too
//           large an order for a tiny x makes J and I NaN as well.
// Errors:   J  relative 5.1e-7 for |x| <= n and n = 2 or 3, 5.1e-9 from n = 4, 2.1e-11 from n = 12;
//              6.7e-9 for |x| > n.
//           Y  relative 4.7e-8 for x <= n; 2.3e-8 for x > n.
//           K  1.7e-7.
//           I  5.6e-7 while the recurrence starts high enough for x: up to x = 20 for every n,
//              100 from n = 6, 700 from n = 24. Beyond that nothing holds: half of the value
//              is wrong at n = 3 and x = 700.
// Cost:     constant memory; steps at most linear in the order. K ends after some thousand. Y and
//           J with |x| > n take n; J with |x| <= n and Y with x < n stop where the outcome is
//           certain, up to n steps near x = n; I takes 2 n where it is not certain to be 0, which
//           for n = 1e9 means x above 5e11. A step takes 2 to 5 ns.
// A negative order is made of the positive one and of the function of the other kind, times a
// sine of a multiple of pi that is small and not 0. Where that function is large the error is,
// and where it overflows, so does the result.
double math_func_bessi(int n, double x, TextBuf& err);
double math_func_bessj(int n, double x, TextBuf& err);
double math_func_bessk(int n, double x, TextBuf& err);
double math_func_bessy(int n, double x, TextBuf& err);

// --- Fractional orders ------------------------------------------------------------------------
//
// I and K of order `nu` at x, and their derivatives.
// Domain:   x > 0, nu >= 0, and x up to about 2.5e6.
// Errors:   relative, orders up to 11: 1e-13 for I, and for K just below x = 2, where its series
//           cancels; else 2e-14. The order costs figures: 3e-12 at 50.5.
// Limits:   10000 iterations of the series and of each fraction, to 1e-16. The recurrences in the
//           order stop where they overflow, after some thousand steps at most for x up to 1000.
// Failure:  x, then nu out of its domain, or no convergence: a message in `err`, and all four
//           results 0.0. Above an order that grows with x (115 at 0.1, 162 at 1, 514 at 100) the
//           recurrence overflows: I is NaN without a message. Above 2147483647 the order
//           doesn't fit: up to three messages.
void math_func_bessik(double x, double nu, double& ri, double& rk, double& rip, double& rkp,
                      TextBuf& err);

// J and Y of order `nu` at x, and their derivatives.
// Domain:   x > 0, nu >= 0, and x up to about 9800, or nu where that is larger.
// Errors:   orders up to 11: relative for x < 2 away from the zeros, 1.3e-14; absolute from there
//           on, 2e-15 up to x = 20, growing with x: 4e-14 at 200, 1.4e-12 at 2000, 1.5e-11 at
//           9800.
// Limits and failure as for math_func_bessik; there J is NaN, and Y where it overflows.
void math_func_bessjy(double x, double nu, double& rj, double& ry, double& rjp, double& ryp,
                      TextBuf& err);

// The functions of any order, negative ones by reflection. Each is 0.0 after a failure of the
// routine under it.
double math_func_bessi_frac(double nu, double x, TextBuf& err);
double math_func_bessj_frac(double nu, double x, TextBuf& err);
double math_func_bessk_frac(double nu, double x, TextBuf& err);
double math_func_bessy_frac(double nu, double x, TextBuf& err);

// The Chebyshev series on [a, b] of the coefficients `c`, which are not none; the first of them
// counts by half.
// Failure:  x outside [a, b]: a message and 0.0.
double math_func_bes_chebev(double a, double b, std::span<const double> c, double x, TextBuf& err);

// The gamma quantities of Temme's series:
//   gampl = 1 / Gamma(1 + x)            gam1 = (gammi - gampl) / (2 x)
//   gammi = 1 / Gamma(1 - x)            gam2 = (gammi + gampl) / 2
// Domain:   |x| <= 0.5.
// Errors:   1e-14 for gam1, 4e-15 for the others.
// Failure:  two messages of math_func_bes_chebev, and four zeros.
void math_func_beschb(double x, double& gam1, double& gam2, double& gampl, double& gammi,
                      TextBuf& err);

// --- Airy functions ---------------------------------------------------------------------------
//
// Ai, Bi and their derivatives at x.
// Domain:   x from -601 to 24684. |x|^1.5 must not vanish either, as it does below 1e-216 other
//           than at 0 itself.
// Errors:   relative for x > 0: 1e-13 up to 5, 2e-13 up to 100. Absolute for x < 0, down to -10,
//           -100 and -601: 3.2e-15, 1.5e-12, 2e-10; the derivatives 1.1e-14, 1.5e-11, 4.5e-9.
// Failure:  two Bessel routines always run, and each appends its own message. A NaN gives NaN.
void math_func_airy(double x, double& ai, double& bi, double& aip, double& bip, TextBuf& err);

}  // namespace quantiverse
