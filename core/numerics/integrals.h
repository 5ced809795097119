#pragma once

#include "text/text_buf.h"

// Exponential integrals, Dawson's integral and the normal distribution, on plain doubles.
//
// A failure appends one line to `err`, which nothing here clears, and gives 0. Every series and
// fraction ends after 100 terms at most. A NaN passes every test of arguments and comes out as a
// NaN unless another result is named.
// Errors are the largest against Boost.Math in extended precision, over the ranges named.
namespace quantiverse {

// Ei(x). Domain: x > 0.
// Relative error: 3.7e-8 up to x = 16.6 (1e-9 absolute near the zero at 0.3725), 2.7e-7 just
// above, falling to 6.2e-8 at x = 700. Infinite above 709.78, where exp(x) is; NaN at infinity.
// Failure: x <= 0. The text of a power series that does not stop is kept though every x that is
// sent there stops it.
double math_func_ei(double x, TextBuf& err);

// E_n(x), the exponential integral of order n. Domain: n >= 0, x >= 0, and x > 0 for n = 0, 1.
// Relative error: 6.2e-8 for x <= 1 (series), 5.2e-7 above (fraction), full for n = 0.
// Failure, in this order: n < 0; x < 0; x = 0 with n = 0 or 1; no convergence, which takes an
// infinite x for the fraction and a NaN for the series.
double math_func_expint(int n, double x, TextBuf& err);

// Dawson's integral, exp(-x^2) times the integral of exp(t^2) from 0 to x. Domain: every x.
// Relative error: 4.5e-8 for |x| < 0.2, 4.1e-7 above. NaN for |x| above 1.7e9, where the count
// of steps no longer fits. Never fails; takes six terms.
double math_func_dawson(double x);

// The standard normal distribution function. Domain: every x; exactly 0 or 1 from |x| = 6 on.
// Error: 2.5e-9. In the lower tail that is all there is: relative it is 1e-6 at -3, 6.3e-5 at
// -4, 0.8% at -5, 40% at -6. Never fails. A NaN is in no range and gives 0.
double math_func_CumNormal(double x);

// Its inverse. Domain: 0 <= p <= 1; p is first moved into [1e-16, 1 - 1.1e-16], so 0 and 1 give
// -8.22 and 8.21.
// Error: 3.1e-9 (|p - 0.5| < 0.42), 2.3e-10 in the tails down to 1e-12, 3.4e-8 down to 1e-16.
// Failure: p < 0; p > 1.
double math_func_CumNormalInv(double p, TextBuf& err);

}  // namespace quantiverse
