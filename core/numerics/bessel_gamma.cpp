#include <cstddef>
#include <span>

#include "numerics/bessel.h"
#include "numerics/bessel_coefficients.h"

namespace quantiverse {

double math_func_bes_chebev(double a, double b, std::span<const double> c, double x, TextBuf& err) {
  if ((x - a) * (x - b) > 0.0) {
    err.append_text("ERROR:  x not in range in routine math_func_bes_chebev().\n");
    return 0.0;
  }
  const double y = (2.0 * x - a - b) / (b - a);
  double d = 0.0;
  double dd = 0.0;
  for (std::size_t j = c.size() - 1; j > 0; --j) {
    const double sv = d;
    d = 2.0 * y * d - dd + c[j];
    dd = sv;
  }
  return y * d - dd + 0.5 * c[0];
}

void math_func_beschb(double x, double& gam1, double& gam2, double& gampl, double& gammi,
                      TextBuf& err) {
  const double xx = 8.0 * x * x - 1.0;
  gam1 = math_func_bes_chebev(-1.0, 1.0, bessel::kGam1, xx, err);
  gam2 = math_func_bes_chebev(-1.0, 1.0, bessel::kGam2, xx, err);
  gampl = gam2 - x * gam1;
  gammi = gam2 + x * gam1;
}

}  // namespace quantiverse
