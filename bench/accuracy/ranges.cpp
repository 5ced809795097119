#include <boost/math/quadrature/gauss_kronrod.hpp>
#include <boost/math/special_functions/airy.hpp>
#include <boost/math/special_functions/bessel.hpp>
#include <boost/math/special_functions/beta.hpp>
#include <boost/math/special_functions/ellint_1.hpp>
#include <boost/math/special_functions/ellint_2.hpp>
#include <boost/math/special_functions/ellint_3.hpp>
#include <boost/math/special_functions/ellint_rc.hpp>
#include <boost/math/special_functions/ellint_rd.hpp>
#include <boost/math/special_functions/ellint_rf.hpp>
#include <boost/math/special_functions/ellint_rj.hpp>
#include <boost/math/special_functions/erf.hpp>
#include <boost/math/special_functions/expint.hpp>
#include <boost/math/special_functions/gamma.hpp>
#include <boost/math/special_functions/jacobi_elliptic.hpp>
#include <cmath>
#include <initializer_list>

#include "accuracy/accuracy.h"

namespace quantiverse::accuracy {
namespace {

using Real = long double;
using enum Error;
namespace bm = boost::math;

constexpr int kPoints = 300;
constexpr Real kPi = 3.14159265358979323846264338327950288L;

const double kBelow2 = std::nextafter(2.0, 0.0);
const double kBelow375 = std::nextafter(3.75, 0.0);
const double kBelow6 = std::nextafter(6.0, 0.0);
const double kBelow8 = std::nextafter(8.0, 0.0);
const double kAbove1 = std::nextafter(1.0, 2.0);
const double kAbove2 = std::nextafter(2.0, 3.0);

std::vector<double> at(std::initializer_list<double> values) { return values; }

// From `from` to `to`, both included; in equal ratios when both have one sign and are more than a
// decade apart, else in equal steps.
std::vector<double> spread(double from, double to, int count = kPoints) {
  std::vector<double> points;
  const double ratio = from != 0.0 ? to / from : 1.0;
  const bool ratios = ratio > 10.0 || (ratio > 0.0 && ratio < 0.1);
  for (int i = 0; i < count - 1; ++i) {
    const double part = static_cast<double>(i) / (count - 1);
    points.push_back(ratios ? from * std::pow(ratio, part) : from + part * (to - from));
  }
  points.push_back(to);
  return points;
}

// Both sides of 0, without it.
std::vector<double> both(double from, double to) {
  std::vector<double> points = spread(from, to);
  for (const double x : spread(-from, -to)) points.push_back(x);
  return points;
}

// --- References ---------------------------------------------------------------------------------

Real exact_i(const double* x) { return bm::cyl_bessel_i(Real{x[0]}, Real{x[1]}); }
Real exact_j(const double* x) { return bm::cyl_bessel_j(Real{x[0]}, Real{x[1]}); }
Real exact_k(const double* x) { return bm::cyl_bessel_k(Real{x[0]}, Real{x[1]}); }
Real exact_y(const double* x) { return bm::cyl_neumann(Real{x[0]}, Real{x[1]}); }
Real exact_ai(const double* x) { return bm::airy_ai(Real{*x}); }
Real exact_bi(const double* x) { return bm::airy_bi(Real{*x}); }

Real exact_log_gamma(const double* x) { return bm::lgamma(Real{*x}); }
Real exact_gamma(const double* x) { return bm::tgamma(Real{*x}); }
Real exact_gamma_p(const double* x) { return bm::gamma_p(Real{x[0]}, Real{x[1]}); }
Real exact_gamma_q(const double* x) { return bm::gamma_q(Real{x[0]}, Real{x[1]}); }
Real exact_beta(const double* x) { return bm::beta(Real{x[0]}, Real{x[1]}); }
Real exact_inc_beta(const double* x) { return bm::ibeta(Real{x[0]}, Real{x[1]}, Real{x[2]}); }
Real exact_erf(const double* x) { return bm::erf(Real{*x}); }
Real exact_erfc(const double* x) { return bm::erfc(Real{*x}); }

Real exact_exp_int(const double* x) { return bm::expint(1, Real{*x}); }
Real exact_exp_int_n(const double* x) { return bm::expint(static_cast<int>(x[0]), Real{x[1]}); }
Real exact_ei(const double* x) { return bm::expint(Real{*x}); }
Real exact_normal(const double* x) { return bm::erfc(-*x / std::sqrt(Real{2})) / 2; }
Real exact_inverse(const double* x) { return -std::sqrt(Real{2}) * bm::erfc_inv(2 * Real{*x}); }
// The library has no such function: its integral, with the exponent turned round so that nothing
// overflows, up to where the integrand is below exp(-60).
Real exact_dawson(const double* x) {
  const double size = std::fabs(*x);
  const double top = size > 1.0 ? std::fmin(size, 60.0 / size) : size;
  const double value = bm::quadrature::gauss_kronrod<double, 61>::integrate(
      [size](double s) { return std::exp(-s * (2.0 * size - s)); }, 0.0, top, 10, 1e-13);
  return std::copysign(value, *x);
}

Real exact_rd(const double* x) { return bm::ellint_rd(Real{x[0]}, Real{x[1]}, Real{x[2]}); }
Real exact_rf(const double* x) { return bm::ellint_rf(Real{x[0]}, Real{x[1]}, Real{x[2]}); }
Real twelve_rc(const double* x) { return 12 * bm::ellint_rc(Real{x[0]}, Real{x[1]}); }
Real twelve_rj(const double* x) {
  return 12 * bm::ellint_rj(Real{x[0]}, Real{x[1]}, Real{x[2]}, Real{x[3]});
}
Real exact_f(const double* x) { return bm::ellint_1(Real{x[1]}, Real{x[0]}); }
Real exact_e(const double* x) { return bm::ellint_2(Real{x[1]}, Real{x[0]}); }
// The library has the other sign of n.
Real twelvefold_pi(const double* x) {
  const Real first = bm::ellint_1(Real{x[2]}, Real{x[0]});
  return first + 12 * (bm::ellint_3(Real{x[2]}, -Real{x[1]}, Real{x[0]}) - first);
}

struct Jacobi {
  Real sn, cn, dn;
};
// The second argument is the complementary modulus; above 1 the modulus is imaginary.
Jacobi exact_jacobi(const double* x) {
  const Real k = x[1];
  Real cn = 0;
  Real dn = 0;
  if (k <= 1) {
    const Real sn = bm::jacobi_elliptic(std::sqrt((1 - k) * (1 + k)), Real{x[0]}, &cn, &dn);
    return {sn, cn, dn};
  }
  const Real sn = bm::jacobi_elliptic(std::sqrt((k - 1) * (k + 1)) / k, x[0] * k, &cn, &dn);
  return {sn / dn / k, cn / dn, 1 / dn};
}
Real exact_sn(const double* x) { return exact_jacobi(x).sn; }
Real exact_cn(const double* x) { return exact_jacobi(x).cn; }
Real exact_dn(const double* x) { return exact_jacobi(x).dn; }

bool x_up_to_order(const double* x) { return x[1] <= x[0]; }
bool x_above_order(const double* x) { return x[1] > x[0]; }
bool by_series(const double* x) { return x[1] < x[0] + 1.0; }
bool by_fraction(const double* x) { return x[1] >= x[0] + 1.0; }
bool by_own_fraction(const double* x) { return x[2] < (x[0] + 1.0) / (x[0] + x[1] + 2.0); }
bool ends_far(const double* x) { return x[1] < 4.0 * x[0] + 20.0 && by_fraction(x); }

// --- Ranges -------------------------------------------------------------------------------------

#define OF_X(formula)     \
  [](const double* a) {   \
    const Real x = *a;    \
    return Real{formula}; \
  }

// clang-format off
std::vector<Range> elementary_ranges() {
  return {
      {"sin", "-50 to 50", kRelative, {both(0.01, 50)}, OF_X(std::sin(x))},
      {"cos", "-50 to 50", kRelative, {both(0.01, 50)}, OF_X(std::cos(x))},
      {"tan", "-50 to 50", kRelative, {both(0.01, 50)}, OF_X(std::tan(x))},
      {"sec", "-50 to 50", kRelative, {both(0.01, 50)}, OF_X(1 / std::cos(x))},
      {"csc", "-50 to 50", kRelative, {both(0.01, 50)}, OF_X(1 / std::sin(x))},
      {"cot", "-50 to 50", kRelative, {both(0.01, 50)}, OF_X(1 / std::tan(x))},
      {"asin", "-1 to 1", kRelative, {both(1e-3, 1)}, OF_X(std::asin(x))},
      {"acos", "-1 to 0.999", kRelative, {spread(-1, 0.999)}, OF_X(std::acos(x))},
      {"atan", "-1000 to 1000", kRelative, {both(1e-3, 1e3)}, OF_X(std::atan(x))},
      {"acot", "-1000 to 1000", kAbsolute, {both(1e-3, 1e3)}, OF_X(std::atan(1 / x))},
      {"asec", "1.001 to 1000, either sign", kAbsolute, {both(1.001, 1e3)}, OF_X(std::acos(1 / x))},
      {"acsc", "1.001 to 1000", kAbsolute, {spread(1.001, 1e3)}, OF_X(std::asin(1 / x))},
      {"acsc", "-1000 to -1.001, against -π - arccsc x", kAbsolute, {spread(-1e3, -1.001)}, OF_X(-kPi - std::asin(1 / x))},
      {"sinh", "-20 to 20", kRelative, {both(0.01, 20)}, OF_X(std::sinh(x))},
      {"cosh", "-20 to 20", kRelative, {both(0.01, 20)}, OF_X(std::cosh(x))},
      {"tanh", "-20 to 20", kRelative, {both(0.01, 20)}, OF_X(std::tanh(x))},
      {"sech", "-20 to 20", kRelative, {both(0.01, 20)}, OF_X(1 / std::cosh(x))},
      {"csch", "-20 to 20", kRelative, {both(0.01, 20)}, OF_X(1 / std::sinh(x))},
      {"coth", "-20 to 20", kRelative, {both(0.01, 20)}, OF_X(1 / std::tanh(x))},
      {"asinh", "0.01 to 1e6", kRelative, {spread(0.01, 1e6)}, OF_X(std::asinh(x))},
      {"asinh", "-1000 to -0.01", kAbsolute, {spread(-1e3, -0.01)}, OF_X(std::asinh(x))},
      {"acosh", "1.001 to 1e6", kAbsolute, {spread(1.001, 1e6)}, OF_X(std::acosh(x))},
      {"atanh", "-0.999 to 0.999", kAbsolute, {both(1e-3, 0.999)}, OF_X(std::atanh(x))},
      {"asech", "1e-6 to 0.999", kAbsolute, {spread(1e-6, 0.999)}, OF_X(std::acosh(1 / x))},
      {"acsch", "0.01 to 1000", kAbsolute, {spread(0.01, 1e3)}, OF_X(std::asinh(1 / x))},
      {"acsch", "-1000 to -0.01", kAbsolute, {spread(-1e3, -0.01)}, OF_X(std::asinh(1 / x))},
      {"acoth", "1.001 to 1000, either sign", kAbsolute, {both(1.001, 1e3)}, OF_X(std::atanh(1 / x))},
      {"exp", "-700 to 700", kRelative, {spread(-700, 700)}, OF_X(std::exp(x))},
      {"ln", "1e-150 to 1e150", kRelative, {spread(1e-150, 1e150)}, OF_X(std::log(x))},
      {"log", "1e-150 to 1e150", kRelative, {spread(1e-150, 1e150)}, OF_X(std::log(x))},
      {"log10", "1e-150 to 1e150", kRelative, {spread(1e-150, 1e150)}, OF_X(std::log10(x))},
  };
}

std::vector<Range> bessel_ranges() {
  const std::vector<double> low = at({0, 1});
  const std::vector<double> whole = at({2, 3, 5, 8, 12, 24});
  const std::vector<double> fractions = at({1.0 / 3, 0.5, 1.5, 2.7, 10.3});
  const std::vector<double> negative = at({-0.4, -2.7});
  return {
      {"AiryAi", "-600 to -100", kAbsolute, {spread(-600, -100)}, exact_ai},
      {"AiryAi", "-100 to -10", kAbsolute, {spread(-100, -10)}, exact_ai},
      {"AiryAi", "-10 to 0", kAbsolute, {spread(-10, 0)}, exact_ai},
      {"AiryAi", "0 to 100", kRelative, {spread(0, 100)}, exact_ai},
      {"AiryBi", "-600 to -100", kAbsolute, {spread(-600, -100)}, exact_bi},
      {"AiryBi", "-100 to -10", kAbsolute, {spread(-100, -10)}, exact_bi},
      {"AiryBi", "-10 to 0", kAbsolute, {spread(-10, 0)}, exact_bi},
      {"AiryBi", "0 to 100", kRelative, {spread(0, 100)}, exact_bi},

      {"BesselI", "orders 0 and 1, x below 3.75", kRelative, {low, spread(1e-3, kBelow375)}, exact_i},
      {"BesselI", "orders 0 and 1, x from 3.75 to 700", kRelative, {low, spread(3.75, 700)}, exact_i},
      {"BesselI", "whole orders 2 to 24, x up to 20", kRelative, {whole, spread(0.1, 20)}, exact_i},
      {"BesselI", "whole orders 8 to 24, x from 20 to 100", kRelative, {at({8, 12, 24}), spread(20, 100)}, exact_i},
      {"BesselI", "order 24, x from 100 to 700", kRelative, {at({24}), spread(100, 700)}, exact_i},
      {"BesselI", "order 3, x from 20 to 100", kRelative, {at({3}), spread(20, 100)}, exact_i},
      {"BesselI", "order 3, x from 100 to 700", kRelative, {at({3}), spread(100, 700)}, exact_i},
      {"BesselI", "fractional orders 1/3 to 10.3, x from 0.05 to 2", kRelative, {fractions, spread(0.05, kBelow2)}, exact_i},
      {"BesselI", "fractional orders 1/3 to 10.3, x from 2 to 700", kRelative, {fractions, spread(2, 700)}, exact_i},
      {"BesselI", "fractional orders -0.4 and -2.7, x from 0.05 to 50", kRelative, {negative, spread(0.05, 50)}, exact_i},

      {"BesselJ", "orders 0 and 1, x below 8", kAbsolute, {low, spread(0, kBelow8)}, exact_j},
      {"BesselJ", "orders 0 and 1, x from 8 to 1e6", kAbsolute, {low, spread(8, 1e6)}, exact_j},
      {"BesselJ", "orders 2 and 3, x up to the order", kRelative, {at({2, 3}), spread(0.1, 3)}, exact_j, x_up_to_order},
      {"BesselJ", "whole orders 5 to 24, x up to the order", kRelative, {at({5, 8, 12, 24}), spread(0.1, 24)}, exact_j, x_up_to_order},
      {"BesselJ", "whole orders 2 to 24, x from the order to 200", kAbsolute, {whole, spread(2, 200)}, exact_j, x_above_order},
      {"BesselJ", "fractional orders 1/3 to 10.3, x from 0.05 to 20", kAbsolute, {fractions, spread(0.05, 20)}, exact_j},
      {"BesselJ", "fractional orders 1/3 to 10.3, x from 20 to 9800", kAbsolute, {fractions, spread(20, 9800)}, exact_j},
      {"BesselJ", "fractional orders -0.4 and -2.7, x from 0.5 to 20", kAbsolute, {negative, spread(0.5, 20)}, exact_j},

      {"BesselK", "orders 0 and 1, x up to 2", kRelative, {low, spread(1e-9, 2)}, exact_k},
      {"BesselK", "orders 0 and 1, x from 2 to 700", kRelative, {low, spread(kAbove2, 700)}, exact_k},
      {"BesselK", "whole orders 2 to 24, x from 0.1 to 600", kRelative, {whole, spread(0.1, 600)}, exact_k},
      {"BesselK", "fractional orders 1/3 to 10.3, x from 0.05 to 2", kRelative, {fractions, spread(0.05, kBelow2)}, exact_k},
      {"BesselK", "fractional orders 1/3 to 10.3, x from 2 to 600", kRelative, {fractions, spread(2, 600)}, exact_k},

      {"BesselY", "orders 0 and 1, x up to 0.1", kRelative, {low, spread(1e-9, 0.1)}, exact_y},
      {"BesselY", "orders 0 and 1, x from 0.1 to 8", kAbsolute, {low, spread(0.1, kBelow8)}, exact_y},
      {"BesselY", "orders 0 and 1, x from 8 to 1e6", kAbsolute, {low, spread(8, 1e6)}, exact_y},
      {"BesselY", "whole orders 2 to 24, x up to the order", kRelative, {whole, spread(0.1, 24)}, exact_y, x_up_to_order},
      {"BesselY", "whole orders 2 to 24, x from the order to 200", kAbsolute, {whole, spread(2, 200)}, exact_y, x_above_order},
      {"BesselY", "fractional orders 1/3 to 2.7, x from 0.5 to 20", kAbsolute, {at({1.0 / 3, 0.5, 1.5, 2.7}), spread(0.5, 20)}, exact_y},
      {"BesselY", "fractional orders 1/3 to 10.3, x from 20 to 9800", kAbsolute, {fractions, spread(20, 9800)}, exact_y},
  };
}

std::vector<Range> gamma_ranges() {
  const std::vector<double> a = at({0.01, 0.5, 2.5, 10, 50, 200});
  const std::vector<double> ab = at({0.001, 0.5, 3, 40, 1000});
  const std::vector<double> x = spread(1e-4, 900);
  const std::vector<double> part = spread(0.001, 0.999, 100);
  return {
      {"BetaFunc", "a and b from 0.01 to 80", kRelative, {spread(0.01, 80, 30), spread(0.01, 80, 30)}, exact_beta},
      {"Erf", "1e-150 to 0.001, either sign", kRelative, {both(1e-150, 1e-3)}, exact_erf},
      {"Erf", "0.001 to 6, either sign", kRelative, {both(1e-3, 6)}, exact_erf},
      {"Erfc", "-6 to 0", kRelative, {spread(-6, 0)}, exact_erfc},
      {"Erfc", "0 to 26", kRelative, {spread(0, 26)}, exact_erfc},
      {"GammaFunc", "0.001 to 10", kRelative, {spread(1e-3, 10)}, exact_gamma},
      {"GammaFunc", "10 to 171", kRelative, {spread(10, 171)}, exact_gamma},
      {"GammaPFunc", "a up to 200, x below a + 1", kAbsolute, {a, x}, exact_gamma_p, by_series},
      {"GammaPFunc", "a up to 200, x from a + 1", kAbsolute, {a, x}, exact_gamma_p, by_fraction},
      {"GammaQFunc", "a up to 200, x below a + 1", kAbsolute, {a, x}, exact_gamma_q, by_series},
      {"GammaQFunc", "a up to 200, x from a + 1 to 4 a + 20", kRelative, {a, x}, exact_gamma_q, ends_far},
      {"IncBetaFunc", "a and b from 0.001 to 1000", kAbsolute, {ab, ab, part}, exact_inc_beta},
      {"IncBetaFunc", "a and b from 0.5 to 40, x below (a + 1) / (a + b + 2)", kRelative, {at({0.5, 3, 40}), at({0.5, 3, 40}), part}, exact_inc_beta, by_own_fraction},
      {"LogGammaFunc", "1e-300 to 0.5", kRelative, {spread(1e-300, 0.5)}, exact_log_gamma},
      {"LogGammaFunc", "0.5 to 3", kAbsolute, {spread(0.5, 3)}, exact_log_gamma},
      {"LogGammaFunc", "3 to 1e4", kRelative, {spread(3, 1e4)}, exact_log_gamma},
      {"LogGammaFunc", "1e4 to 1e305", kRelative, {spread(1e4, 1e305)}, exact_log_gamma},
  };
}

std::vector<Range> integral_ranges() {
  const double below02 = std::nextafter(0.2, 0.0);
  return {
      {"DawsonIntegral", "up to 0.2, either sign", kRelative, {both(1e-10, below02)}, exact_dawson},
      {"DawsonIntegral", "0.2 to 1000, either sign", kRelative, {both(0.2, 1e3)}, exact_dawson},
      {"ExpInt", "up to 1", kRelative, {spread(1e-10, 1)}, exact_exp_int},
      {"ExpInt", "1 to 700", kRelative, {spread(kAbove1, 700)}, exact_exp_int},
      {"ExpIntEi", "1e-30 to 0.3", kRelative, {spread(1e-30, 0.3)}, exact_ei},
      {"ExpIntEi", "0.3 to 0.45, around its zero", kAbsolute, {spread(0.3, 0.45)}, exact_ei},
      {"ExpIntEi", "0.45 to 16.6", kRelative, {spread(0.45, 16.6)}, exact_ei},
      {"ExpIntEi", "16.63 to 700", kRelative, {spread(16.63, 700)}, exact_ei},
      {"ExpIntN", "order 0", kRelative, {at({0}), spread(1e-300, 700)}, exact_exp_int_n},
      {"ExpIntN", "orders 2 to 100, x up to 1", kRelative, {at({2, 3, 13, 100}), spread(1e-10, 1)}, exact_exp_int_n},
      {"ExpIntN", "orders 2 to 100, x from 1 to 700", kRelative, {at({2, 3, 13, 100}), spread(kAbove1, 700)}, exact_exp_int_n},
      {"Normsdist", "-40 to 40", kAbsolute, {both(0.1, 40)}, exact_normal},
      {"Normsdist", "-3 to 0", kRelative, {spread(-3, 0)}, exact_normal},
      {"Normsdist", "-4 to -3", kRelative, {spread(-4, -3)}, exact_normal},
      {"Normsdist", "-5 to -4", kRelative, {spread(-5, -4)}, exact_normal},
      {"Normsdist", "-6 to -5", kRelative, {spread(-kBelow6, -5)}, exact_normal},
      {"Normsinv", "0.0801 to 0.9199", kAbsolute, {spread(0.0801, 0.9199)}, exact_inverse},
      {"Normsinv", "1e-12 to 0.08", kAbsolute, {spread(1e-12, 0.0799)}, exact_inverse},
      {"Normsinv", "1e-16 to 1e-12", kAbsolute, {spread(1e-16, 1e-12)}, exact_inverse},
  };
}

std::vector<Range> elliptic_ranges() {
  const std::vector<double> wide = spread(1e-9, 1e9, 14);
  const std::vector<double> few = at({1e-3, 0.1, 1, 2, 5, 100});
  const std::vector<double> u = spread(-20, 20, 201);
  const std::vector<double> phi = spread(0.001, 1.5707);
  return {
      {"CarlsonRC", "1e-9 to 1e9, against 12 R<sub>C</sub>", kRelative, {spread(1e-9, 1e9, 40), spread(1e-9, 1e9, 40)}, twelve_rc},
      {"CarlsonRD", "1e-9 to 1e9", kRelative, {wide, wide, wide}, exact_rd},
      {"CarlsonRF", "1e-9 to 1e9", kRelative, {wide, wide, wide}, exact_rf},
      {"CarlsonRJ", "0.001 to 100, against 12 R<sub>J</sub>", kRelative, {few, few, few, few}, twelve_rj},
      {"EllipticE", "φ up to 1.5707, k up to 0.9", kRelative, {phi, at({0, 0.3, 0.9})}, exact_e},
      {"EllipticE", "φ up to 1.5707, k = 0.999999", kRelative, {phi, at({0.999999})}, exact_e},
      {"EllipticF", "φ up to 1.5707, k up to 0.9", kRelative, {phi, at({0, 0.3, 0.9})}, exact_f},
      {"EllipticF", "φ up to 1.5707, k = 0.999999", kRelative, {phi, at({0.999999})}, exact_f},
      {"EllipticPi", "φ up to 1.5, n from -0.9 to 3, k up to 0.9, against F + 12 (Π - F)", kRelative, {spread(0.01, 1.5, 40), at({-0.9, -0.3, 0, 0.5, 3}), at({0, 0.5, 0.9})}, twelvefold_pi},
      {"JacobiCN", "u from -20 to 20, k from 0.001 to 1", kAbsolute, {u, spread(1e-3, 1, 40)}, exact_cn},
      {"JacobiCN", "u from -20 to 20, k from 1 to 10", kAbsolute, {u, spread(1, 10, 40)}, exact_cn},
      {"JacobiDN", "u from -20 to 20, k from 0.001 to 1", kAbsolute, {u, spread(1e-3, 1, 40)}, exact_dn},
      {"JacobiDN", "u from -20 to 20, k from 1 to 10", kAbsolute, {u, spread(1, 10, 40)}, exact_dn},
      {"JacobiSN", "u from -20 to 20, k from 0.001 to 1", kAbsolute, {u, spread(1e-3, 1, 40)}, exact_sn},
      {"JacobiSN", "u from -20 to 20, k from 1 to 10", kAbsolute, {u, spread(1, 10, 40)}, exact_sn},
  };
}
// clang-format on

}  // namespace

std::vector<Range> ranges() {
  std::vector<Range> all = elementary_ranges();
  for (const auto& family : {bessel_ranges, gamma_ranges, integral_ranges, elliptic_ranges}) {
    const std::vector<Range> rows = family();
    all.insert(all.end(), rows.begin(), rows.end());
  }
  return all;
}

}  // namespace quantiverse::accuracy
