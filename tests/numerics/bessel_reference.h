#pragma once

#include <boost/math/special_functions/bessel.hpp>

#include "numerics/accuracy.h"

// The Bessel functions of one order, ours and the reference's, as functions of x.
namespace quantiverse {

inline Routine of_order(int n, double (*f)(int, double, TextBuf&)) {
  return [n, f](double x, TextBuf& err) { return f(n, x, err); };
}
inline Routine of_order(double nu, double (*f)(double, double, TextBuf&)) {
  return [nu, f](double x, TextBuf& err) { return f(nu, x, err); };
}
inline Reference exact_i(double nu) {
  return [nu](long double x) { return boost::math::cyl_bessel_i(static_cast<long double>(nu), x); };
}
inline Reference exact_j(double nu) {
  return [nu](long double x) { return boost::math::cyl_bessel_j(static_cast<long double>(nu), x); };
}
inline Reference exact_k(double nu) {
  return [nu](long double x) { return boost::math::cyl_bessel_k(static_cast<long double>(nu), x); };
}
inline Reference exact_y(double nu) {
  return [nu](long double x) { return boost::math::cyl_neumann(static_cast<long double>(nu), x); };
}

}  // namespace quantiverse
