#pragma once

#include "text/text_buf.h"

// Elliptic integrals in the symmetric forms of Carlson, the Legendre forms made of them, and the
// Jacobi functions.
//
// Each routine tests its arguments in a fixed order, appends the text of the first test that
// fails to `err` and returns 0.0. The Legendre forms have no tests: their message names the
// Carlson routine that refused, and two refusals are two messages. A NaN passes every test, and
// gives NaN. Every loop ends: the duplication shrinks the deviations it looks at by a factor of
// 4 a round, at most some 60 rounds from within the limits, and stops on a NaN.
namespace quantiverse {

// R_C(x, y) times 12, to 4e-7: the constant term of its series is 12.0 and not 1.0, and what is
// built on it inherits that.
// Domain:   x >= 0, y != 0, 1.69e-38 <= x + |y| <= 3e37; and x not in (0, 0.01028196) together
//           with y < -1.72e19.
// Result:   NaN without a message for every y < 0.
double math_func_carlsons_rc(double x, double y, TextBuf& err);

// R_D(x, y, z).
// Domain:   x, y >= 0; x + y and z at least 1e-25; none above 4.5e21.
// Accuracy: 2e-15 relative.
double math_func_carlsons_rd(double x, double y, double z, TextBuf& err);

// R_F(x, y, z).
// Domain:   x, y, z >= 0; every sum of two at least 1.5e-38; none above 3e37.
// Accuracy: 2e-15 relative.
double math_func_carlsons_rf(double x, double y, double z, TextBuf& err);

// Not R_J(x, y, z, p): R_C enters its sum twelvefold, so that equal arguments `a` give 9.25 and
// not 1 time a^-1.5.
// Domain:   x, y, z >= 0; y + z and |p| at least 2.5e-13; z and |p| at most 9e11. Neither x nor a
//           large y is looked at; where they drive the inner R_C out of its domain, its message
//           comes once a round.
// A p below 0 asks for the principal value, but the inner R_C of a negative y is NaN there
// whenever p * pt / y is negative, which is always.
double math_func_carlsons_rj(double x, double y, double z, double p, TextBuf& err);

// Legendre's F(phi, k). Domain: |phi| <= pi/2, beyond which the value is folded back by
// sin(phi); |k sin(phi)| <= 1.
double math_func_ellf(double phi, double k, TextBuf& err);

// Legendre's E(phi, k); folds and fails as math_func_ellf.
double math_func_elle(double phi, double k, TextBuf& err);

// The third kind, with the characteristic as 1 + n sin^2(phi). Off by what math_func_carlsons_rj
// is off, for every n other than 0.
double math_func_ellpi(double phi, double n, double k, TextBuf& err);

// The Jacobi functions sn, cn, dn of `u`, all three at once. `emmc` is the complementary
// parameter, 1 - k^2.
// Domain:   any finite u and emmc, also emmc < 0.
// Accuracy: see the tests; at most 13 stages.
// Failure:  none, `err` is never touched.
void math_func_sncndn(double u, double emmc, double& sn, double& cn, double& dn, TextBuf& err);

}  // namespace quantiverse
