#include "builtins/special.h"

#include <cmath>

#include "numerics/bessel.h"
#include "numerics/elliptic.h"
#include "numerics/gamma.h"
#include "numerics/integrals.h"
#include "text/numbers.h"

namespace quantiverse {
namespace {

using OfWholeOrder = double (*)(int, double, TextBuf&);
using OfAnyOrder = double (*)(double, double, TextBuf&);

double bessel(const double* x, TextBuf& err, OfWholeOrder whole, OfAnyOrder any) {
  const double nu = x[0];
  return nu == std::floor(nu) ? whole(truncate_to_int32(nu), x[1], err) : any(nu, x[1], err);
}

struct Airy {
  double ai = 0.0, bi = 0.0;
};

Airy airy(const double* x, TextBuf& err) {
  Airy functions;
  double ai_slope = 0.0;
  double bi_slope = 0.0;
  math_func_airy(*x, functions.ai, functions.bi, ai_slope, bi_slope, err);
  return functions;
}

struct Jacobi {
  double sn = 0.0, cn = 0.0, dn = 0.0;
};

Jacobi jacobi(const double* x, TextBuf& err) {
  Jacobi functions;
  const double parameter = x[1] * x[1];
  // Too large a modulus is the overflow mark once it is squared, and gives 0 like any other.
  if (is_overflow_mark(parameter)) return functions;
  math_func_sncndn(x[0], parameter, functions.sn, functions.cn, functions.dn, err);
  return functions;
}

}  // namespace

double special_gamma(const double* x, TextBuf& err) {
  const double logarithm = math_func_gammln(*x, err);
  return err.is_empty_text() ? std::exp(logarithm) : logarithm;
}
double special_log_gamma(const double* x, TextBuf& err) { return math_func_gammln(*x, err); }
double special_gamma_p(const double* x, TextBuf& err) { return math_func_gammp(x[0], x[1], err); }
double special_gamma_q(const double* x, TextBuf& err) { return math_func_gammq(x[0], x[1], err); }
double special_beta(const double* x, TextBuf& err) { return math_func_beta(x[0], x[1], err); }
double special_inc_beta(const double* x, TextBuf& err) {
  return math_func_betai(x[0], x[1], x[2], err);
}
double special_erf(const double* x, TextBuf& err) { return math_func_erf(*x, err); }
double special_erfc(const double* x, TextBuf& err) { return math_func_erfc(*x, err); }

double special_exp_int(const double* x, TextBuf& err) { return math_func_expint(1, *x, err); }
double special_exp_int_ei(const double* x, TextBuf& err) { return math_func_ei(*x, err); }
double special_exp_int_n(const double* x, TextBuf& err) {
  if (x[0] != std::floor(x[0])) {
    err.append_text("ERROR:  Arg n must be integer in ExpIntN().\n");
    return 0.0;
  }
  return math_func_expint(truncate_to_int32(x[0]), x[1], err);
}
double special_dawson(const double* x, TextBuf&) { return math_func_dawson(*x); }
double special_norms_dist(const double* x, TextBuf&) { return math_func_CumNormal(*x); }
double special_norms_inv(const double* x, TextBuf& err) { return math_func_CumNormalInv(*x, err); }

double special_bessel_i(const double* x, TextBuf& err) {
  return bessel(x, err, math_func_bessi, math_func_bessi_frac);
}
double special_bessel_j(const double* x, TextBuf& err) {
  return bessel(x, err, math_func_bessj, math_func_bessj_frac);
}
double special_bessel_k(const double* x, TextBuf& err) {
  return bessel(x, err, math_func_bessk, math_func_bessk_frac);
}
double special_bessel_y(const double* x, TextBuf& err) {
  return bessel(x, err, math_func_bessy, math_func_bessy_frac);
}
double special_airy_ai(const double* x, TextBuf& err) { return airy(x, err).ai; }
double special_airy_bi(const double* x, TextBuf& err) { return airy(x, err).bi; }

double special_carlson_rc(const double* x, TextBuf& err) {
  return math_func_carlsons_rc(x[0], x[1], err);
}
double special_carlson_rd(const double* x, TextBuf& err) {
  return math_func_carlsons_rd(x[0], x[1], x[2], err);
}
double special_carlson_rf(const double* x, TextBuf& err) {
  return math_func_carlsons_rf(x[0], x[1], x[2], err);
}
double special_carlson_rj(const double* x, TextBuf& err) {
  return math_func_carlsons_rj(x[0], x[1], x[2], x[3], err);
}
double special_elliptic_e(const double* x, TextBuf& err) { return math_func_elle(x[0], x[1], err); }
double special_elliptic_f(const double* x, TextBuf& err) { return math_func_ellf(x[0], x[1], err); }
double special_elliptic_pi(const double* x, TextBuf& err) {
  return math_func_ellpi(x[0], x[1], x[2], err);
}
double special_jacobi_cn(const double* x, TextBuf& err) { return jacobi(x, err).cn; }
double special_jacobi_dn(const double* x, TextBuf& err) { return jacobi(x, err).dn; }
double special_jacobi_sn(const double* x, TextBuf& err) { return jacobi(x, err).sn; }

}  // namespace quantiverse
