#pragma once

#include "text/text_buf.h"

// Elliptic integrals in the symmetric forms of Carlson, the Legendre forms made of them, and the
// Jacobi functions.
//
// Each Carlson routine tests its arguments in a fixed order, appends the text of the first test
// that fails to `err` and returns 0.0. The Legendre forms have no tests: their message names the
// Carlson routine that refused, and two refusals are two messages. A NaN passes every test and
// gives NaN without a message.
// The duplication shrinks its deviations by a factor of 4 a round, ends on a NaN, and has no
// other limit: at most 100 rounds within the domains, 550 for a math_func_carlsons_rj whose x and
// y are 0 or whose x or y is near the largest double.
// Errors are the largest against Boost.Math in extended precision.
namespace quantiverse {

// Twelve times R_C(x, y): the constant term of the series is 12.0 where it should be 1.0, and all
// that is built on it inherits that.
// Domain:   x >= 0; y not 0; x + |y| from 1.69e-38 to 3e37; and not y < -1.72e19 together with
//           0 < x < 0.01028196.
// Error:    against twelve times R_C, relative 4.1e-7. NaN without a message for every y < 0.
double math_func_carlsons_rc(double x, double y, TextBuf& err);

// R_D(x, y, z).
// Domain:   x, y >= 0; x + y and z at least 1e-25; none above 4.5e21.
// Error:    relative 1e-15.
double math_func_carlsons_rd(double x, double y, double z, TextBuf& err);

// R_F(x, y, z).
// Domain:   x, y, z >= 0; each sum of two at least 1.5e-38; none above 3e37.
// Error:    relative 1e-15.
double math_func_carlsons_rf(double x, double y, double z, TextBuf& err);

// Nearly twelve times R_J(x, y, z, p): R_C enters its sum twelvefold and the rest once, so that
// four arguments of 1 give 9.25.
// Domain:   x, y, z >= 0; y + z and |p| at least 2.5e-13; z and |p| at most 9e11. x is in no test
//           of size, y in none of large size: where they drive the inner R_C out of its domain,
//           its message comes once a round. NaN for every p < 0, by way of R_C.
double math_func_carlsons_rj(double x, double y, double z, double p, TextBuf& err);

// Legendre's F and E of the amplitude phi and the modulus k.
// Domain:   |k sin(phi)| <= 1. Beyond |phi| = pi/2 the values are those of the amplitude that
//           has the same sine there. E is refused where k sin(phi) comes to 1 at pi/2.
// Error:    relative 1e-15 up to k = 0.9; the cancellation in 1 - (k sin(phi))^2 costs figures
//           near 1: 1.4e-12 (F) and 5e-14 (E) at k = 0.999999.
double math_func_ellf(double phi, double k, TextBuf& err);
double math_func_elle(double phi, double k, TextBuf& err);

// The third kind, with the characteristic entering as 1 + n sin^2(phi). What it differs by from F
// is nearly twelvefold, through math_func_carlsons_rj; at n = 0 it is F.
double math_func_ellpi(double phi, double n, double k, TextBuf& err);

// The Jacobi functions sn, cn, dn of `u`, all three at once. `emmc` is the complementary
// parameter, 1 - k^2.
// Domain:   any u; emmc >= 0. For emmc < 0 the parameter is turned over the wrong way: the results
//           are those of dn, cn and sn with the complementary parameter -emmc (1 - emmc).
// Error:    5e-9 (1 + |u|) for emmc up to 1; more above, 1e-7 (1 + |u|) at 100.
// Limits:   13 stages. Infinite arguments give NaN.
// Failure:  none; `err` is never touched.
void math_func_sncndn(double u, double emmc, double& sn, double& cn, double& dn, TextBuf& err);

}  // namespace quantiverse
