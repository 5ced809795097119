#pragma once

#include "text/text_buf.h"

// Gamma, beta and error functions of real arguments, on plain doubles.
//
// A failure appends one line to `err` and the result is what each routine says below; nothing
// clears `err`, so a call whose inner calls fail leaves a line for each, in the order of the
// calls. The series and the fractions stop at a relative step of 3e-7, or fail after 100 steps:
// about seven figures is what they are made for. A NaN passes every test of arguments; it comes
// out as a NaN, or ends a series or fraction by its limit.
// Errors are the largest against Boost.Math in extended precision, over the ranges named.
namespace quantiverse {

// ln gamma(x). Domain: x > 0.
// Error: 1.1e-13 up to x = 3, 2.1e-10 up to 1e4; relative, 4.1e-13 away from the zeros at 1 and 2.
// Infinite for x below 5.8e-307 and above 2.5e305, NaN for an infinite x.
// Failure: x <= 0; 0.
double math_func_gammln(double x, TextBuf& err);

// P(a, x) and Q(a, x), the regularised incomplete gamma functions. Domain: a > 0, x >= 0.
// Error for a up to 200: 4.2e-7; relative, 8e-7 for P, and 5.1e-7 for Q from x = a + 1 on, where
// the fraction gives it. Below that Q is 1 - P, and a small Q has no figures of its own.
// Failure: x < 0, then a <= 0; 0. No convergence: what P or Q is when the routine underneath
// gives 0. That is so near x = a for a above 388 (x < a + 1) and above 7000 (x >= a + 1), for
// subnormal a, and for an infinite a or x.
double math_func_gammp(double a, double x, TextBuf& err);
double math_func_gammq(double a, double x, TextBuf& err);

// The power series behind both: P(a, x) in `gamser`, ln gamma(a) in `gln`. Meant for x < a + 1.
// Failure: x < 0, or no convergence; `gamser` is 0, `gln` stands. The message of a bad `a` comes
// first, since its logarithm is taken before x is looked at.
void math_func_gser(double& gamser, double a, double x, double& gln, TextBuf& err);

// The continued fraction: Q(a, x) in `gammcf`, ln gamma(a) in `gln`. Meant for x >= a + 1.
// Failure: no convergence; both are 0.
void math_func_gcf(double& gammcf, double a, double x, double& gln, TextBuf& err);

// erf(x) and erfc(x) by way of P and Q at 1/2 and the square of x.
// Relative error: 3.7e-8 for erf, 3e-7 for erfc up to x = 26. The square loses its figures for
// |x| below 1e-156 and vanishes, erf with it, below 1.6e-162.
// Failure: none but that of the fraction, when the square is infinite (|x| above 1.3e154).
double math_func_erf(double x, TextBuf& err);
double math_func_erfc(double x, TextBuf& err);

// B(z, w). Domain: z > 0, w > 0. Relative error: 5e-11 for z and w up to 80.
// Failure: that of math_func_gammln for z, w, z + w; each counts as a logarithm of 0.
double math_func_beta(double z, double w, TextBuf& err);

// I_x(a, b), the regularised incomplete beta function. Domain: a > 0, b > 0, 0 <= x <= 1.
// Error for a and b from 1e-3 to 1000: 6e-8; relative, 5e-7 for x below (a + 1) / (a + b + 2).
// Beyond that it is 1 minus its mirror image, and a small result has no figures of its own.
// Failure: x < 0, then x > 1; 0. a, b and a + b are tested by math_func_gammln, and not at
// x = 0 or 1; no convergence counts as a fraction of 0, so the result is 0 or 1. That is so for
// a and b both above about 7500.
double math_func_betai(double a, double b, double x, TextBuf& err);

// The continued fraction of I_x(a, b), by the modified Lentz method.
// Failure: no convergence; 0.
double math_func_betacf(double a, double b, double x, TextBuf& err);

}  // namespace quantiverse
