#pragma once

#include <span>

#include "text/text_buf.h"

// Bessel functions of whole and of fractional order, and the Airy functions.
//
// Whole orders come from approximations of low degree at orders 0 and 1 and recurrences above
// them; fractional orders from a series below x = 2 and from continued fractions above it. So the
// two families differ in accuracy by eight digits, and a whole order is not the limit of its
// neighbours to the last figure shown.
namespace quantiverse {

// --- Orders 0 and 1 ---------------------------------------------------------------------------
//
// No argument is tested: K and Y take the logarithm of x and divide by it as the arithmetic
// gives. BesselJ of order 0 at 0 is 1.0000000028, the ratio of two constants.
// Accuracy: beside the coefficients, in bessel_coefficients.h.
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
// Failure:  no messages. An overflow on the way up ends as an infinity (K) or NaN (Y); both are
//           reached long before the true value leaves the range of a double only where x is tiny.
// Cost:     memory is constant. Steps are at most linear in the order:
//           K never more than a few thousand; Y and J with |x| > n take n; J with |x| <= n
//           stops where its answer has become 0; I takes 2 n unless it is certain to be 0.
//           A step takes about 3 ns.
// A negative order is made of the positive one and of the function of the other kind, times a
// sine of a multiple of pi that is small and not 0; where that function overflows, NaN or an
// infinity comes out.
double math_func_bessi(int n, double x, TextBuf& err);
double math_func_bessj(int n, double x, TextBuf& err);
double math_func_bessk(int n, double x, TextBuf& err);
double math_func_bessy(int n, double x, TextBuf& err);

// --- Fractional orders ------------------------------------------------------------------------
//
// I and K of order `nu` at x, and their derivatives.
// Domain:   x > 0, nu >= 0. x up to about 10000: beyond it the first fraction does not converge.
// Limits:   10000 iterations of each series and fraction, to 1e-16; the recurrences in the order
//           end where they overflow.
// Failure:  a message in `err`, and all four results 0.0. From some hundred orders on the
//           recurrence for I overflows and the results are NaN, without a message.
void math_func_bessik(double x, double nu, double& ri, double& rk, double& rip, double& rkp,
                      TextBuf& err);

// J and Y of order `nu` at x, and their derivatives; the rest as for math_func_bessik.
void math_func_bessjy(double x, double nu, double& rj, double& ry, double& rjp, double& ryp,
                      TextBuf& err);

// The functions of any order, negative ones by reflection. Each is 0.0 after a failure of the
// routine under it.
double math_func_bessi_frac(double nu, double x, TextBuf& err);
double math_func_bessj_frac(double nu, double x, TextBuf& err);
double math_func_bessk_frac(double nu, double x, TextBuf& err);
double math_func_bessy_frac(double nu, double x, TextBuf& err);

// The Chebyshev series of the coefficients `c` on [a, b], the first of them counted by half.
// Failure:  x outside [a, b]: a message and 0.0.
double math_func_bes_chebev(double a, double b, std::span<const double> c, double x, TextBuf& err);

// The gamma quantities of Temme's series:
//   gampl = 1 / Gamma(1 + x)            gam1 = (gammi - gampl) / (2 x)
//   gammi = 1 / Gamma(1 - x)            gam2 = (gammi + gampl) / 2
// Domain:   |x| <= 0.5.
// Failure:  two messages of math_func_bes_chebev, and four zeros.
void math_func_beschb(double x, double& gam1, double& gam2, double& gampl, double& gammi,
                      TextBuf& err);

// --- Airy functions ---------------------------------------------------------------------------
//
// Ai, Bi and their derivatives at x.
// Domain:   every x but the very small and the very large: |x|^1.5 must neither vanish (below
//           about 1e-216) nor take the Bessel routines beyond their 10000 iterations.
// Failure:  two Bessel routines run, and each appends its own message. A NaN gives NaN.
void math_func_airy(double x, double& ai, double& bi, double& aip, double& bip, TextBuf& err);

}  // namespace quantiverse
