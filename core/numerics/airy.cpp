#include <cmath>
#include <limits>
#include <numbers>

#include "numerics/bessel.h"

namespace quantiverse {
namespace {

using std::numbers::pi;

constexpr double kOneThird = 1.0 / 3.0;
constexpr double kTwoThirds = 2.0 / 3.0;
constexpr double kOneOverRoot3 = 0.5773502691896257;
constexpr double kTwoOverRoot3 = 1.1547005383792515;

}  // namespace

// The functions are Bessel functions of order 1/3 and their derivatives ones of order 2/3, at
// z = 2/3 |x|^1.5. Both orders are always computed, so that a failure reports twice.
void math_func_airy(double x, double& ai, double& bi, double& aip, double& bip, TextBuf& err) {
  const double absx = std::fabs(x);
  const double rootx = std::sqrt(absx);
  const double z = kTwoThirds * absx * rootx;
  if (x > 0.0) {
    double ri = 0.0;
    double rk = 0.0;
    double rip = 0.0;
    double rkp = 0.0;
    math_func_bessik(z, kOneThird, ri, rk, rip, rkp, err);
    ai = rootx * kOneOverRoot3 * rk / pi;
    bi = (ri * kTwoOverRoot3 + rk / pi) * rootx;
    math_func_bessik(z, kTwoThirds, ri, rk, rip, rkp, err);
    aip = x * -kOneOverRoot3 * rk / pi;
    bip = (ri * kTwoOverRoot3 + rk / pi) * x;
  } else if (x < 0.0) {
    double rj = 0.0;
    double ry = 0.0;
    double rjp = 0.0;
    double ryp = 0.0;
    math_func_bessjy(z, kOneThird, rj, ry, rjp, ryp, err);
    ai = (rj - ry * kOneOverRoot3) * (rootx * 0.5);
    bi = (rj * kOneOverRoot3 + ry) * (rootx * -0.5);
    math_func_bessjy(z, kTwoThirds, rj, ry, rjp, ryp, err);
    aip = (ry * kOneOverRoot3 + rj) * (absx * 0.5);
    bip = (rj * kOneOverRoot3 - ry) * (absx * 0.5);
  } else if (x == 0.0) {
    ai = 0.3550280538878172;
    bi = 0.6149266274460007;
    aip = -0.2588194037928068;
    bip = 0.44828835735382644;
  } else {
    ai = bi = aip = bip = std::numeric_limits<double>::quiet_NaN();
  }
}

}  // namespace quantiverse
