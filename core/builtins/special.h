#pragma once

#include "builtins/function_table.h"

// The routines of the special functions, in the form that the function table takes. What they
// compute, how well and where they fail is told with the numerical routines that they call.
namespace quantiverse {

double special_gamma(const double* x, TextBuf& err);
double special_log_gamma(const double* x, TextBuf& err);
double special_gamma_p(const double* x, TextBuf& err);  // a, x
double special_gamma_q(const double* x, TextBuf& err);  // a, x
double special_beta(const double* x, TextBuf& err);
double special_inc_beta(const double* x, TextBuf& err);  // a, b, x
double special_erf(const double* x, TextBuf& err);
double special_erfc(const double* x, TextBuf& err);

double special_exp_int(const double* x, TextBuf& err);
double special_exp_int_ei(const double* x, TextBuf& err);
double special_exp_int_n(const double* x, TextBuf& err);  // a whole order, x
double special_dawson(const double* x, TextBuf& err);
double special_norms_dist(const double* x, TextBuf& err);
double special_norms_inv(const double* x, TextBuf& err);

// Any order, x. A whole order has a routine of its own.
double special_bessel_i(const double* x, TextBuf& err);
double special_bessel_j(const double* x, TextBuf& err);
double special_bessel_k(const double* x, TextBuf& err);
double special_bessel_y(const double* x, TextBuf& err);
double special_airy_ai(const double* x, TextBuf& err);
double special_airy_bi(const double* x, TextBuf& err);

double special_carlson_rc(const double* x, TextBuf& err);
double special_carlson_rd(const double* x, TextBuf& err);
double special_carlson_rf(const double* x, TextBuf& err);
double special_carlson_rj(const double* x, TextBuf& err);
double special_elliptic_e(const double* x, TextBuf& err);   // phi, k
double special_elliptic_f(const double* x, TextBuf& err);   // phi, k
double special_elliptic_pi(const double* x, TextBuf& err);  // phi, n, k
// u, k
double special_jacobi_cn(const double* x, TextBuf& err);
double special_jacobi_dn(const double* x, TextBuf& err);
double special_jacobi_sn(const double* x, TextBuf& err);

}  // namespace quantiverse
