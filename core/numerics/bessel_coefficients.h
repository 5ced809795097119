#pragma once

#include <array>
#include <cstddef>

// Coefficients of the Bessel functions, in ascending powers of the variable that is named.
// Errors are the largest that were found against Boost.Math in extended precision.
namespace quantiverse::bessel {

template <std::size_t kTerms>
struct Rational {
  std::array<double, 6> numerator;
  std::array<double, kTerms> denominator;
};

// A function of large argument as a cosine or sine of |x| - phase, with amplitudes p and q in
// y = (8 / |x|)^2.
struct Wave {
  double phase;
  std::array<double, 5> p;
  std::array<double, 5> q;
};

// clang-format off

// I0(x) for |x| < 3.75, in (x / 3.75)^2. Relative error 3.4e-8.
inline constexpr std::array kI0Small = {1.0, 3.5156229, 3.0899424, 1.2067492, 0.2659732, 0.0360768, 0.0045813};

// I0(x) sqrt(|x|) exp(-|x|) for |x| >= 3.75, in 3.75 / |x|. Relative error 4.8e-7, near x = 99.
inline constexpr std::array kI0Large = {0.39894228, 0.01328592, 0.00225319, -0.00157565, 0.00916281, -0.02057706, 0.02635537, -0.01647633, 0.00392377};

// I1(x) / x for |x| < 3.75, in (x / 3.75)^2. Relative error 1.4e-8.
inline constexpr std::array kI1Small = {0.5, 0.87890594, 0.51498869, 0.15084934, 0.02658733, 0.00301532, 0.00032411};

// I1(|x|) sqrt(|x|) exp(-|x|) for |x| >= 3.75, in 3.75 / |x|. Relative error 5.6e-7, near x = 98.
// The literature has 0.00163801 as the fourth; results have always rested on the one here.
inline constexpr std::array kI1Large = {0.39894228, -0.03988024, -0.00362018, 0.0016381, -0.01031555, 0.02282967, -0.02895312, 0.01787654, -0.00420059};

// K0(x) + ln(x / 2) I0(x) for 0 < x <= 2, in x^2 / 4. Relative error of K0 7.7e-8.
inline constexpr std::array kK0Small = {-0.57721566, 0.4227842, 0.23069756, 0.0348859, 0.00262698, 0.0001075, 7.4e-06};

// K0(x) sqrt(x) exp(x) for x > 2, in 2 / x. Relative error 1.6e-7, near x = 39.
inline constexpr std::array kK0Large = {1.25331414, -0.07832358, 0.02189568, -0.01062446, 0.00587872, -0.0025154, 0.00053208};

// x (K1(x) - ln(x / 2) I1(x)) for 0 < x <= 2, in x^2 / 4. Relative error of K1 2.8e-8.
inline constexpr std::array kK1Small = {1.0, 0.15443144, -0.67278579, -0.18156897, -0.01919402, -0.00110404, -4.686e-05};

// K1(x) sqrt(x) exp(x) for x > 2, in 2 / x. Relative error 1.7e-7, near x = 39.
inline constexpr std::array kK1Large = {1.25331414, 0.23498619, -0.0365562, 0.01504268, -0.00780353, 0.00325614, -0.00068245};

// J0(x) for |x| < 8, in x^2. Error 4.9e-9; the constant terms differ, so J0(0) is 1.0000000028.
inline constexpr Rational<6> kJ0Small = {
    {57568490574.0, -13362590354.0, 651619640.7, -11214424.18, 77392.33017, -184.9052456},
    {57568490411.0, 1029532985.0, 9494680.718, 59272.64853, 267.8532712, 1.0}};

// J1(x) / x for |x| < 8, in x^2. Error of J1 5e-9.
inline constexpr Rational<6> kJ1Small = {
    {72362614232.0, -7895059235.0, 242396853.1, -2972611.439, 15704.4826, -30.16036606},
    {144725228442.0, 2300535178.0, 18583304.74, 99447.43394, 376.9991397, 1.0}};

// Y0(x) - (2 / pi) J0(x) ln(x) for 0 < x < 8, in x^2. Error of Y0 1.7e-8 from x = 0.1 on,
// 3.8e-8 below.
inline constexpr Rational<6> kY0Small = {
    {-2957821389.0, 7062834065.0, -512359803.6, 10879881.29, -86327.92757, 228.4622733},
    {40076544269.0, 745249964.8, 7189466.438, 47447.2647, 226.1030244, 1.0}};

// (Y1(x) - (2 / pi) (J1(x) ln(x) - 1 / x)) / x for 0 < x < 8, in x^2. Error of Y1 1.2e-8 from
// x = 0.1 on; relative error 6e-10 below.
inline constexpr Rational<7> kY1Small = {
    {-4900604943000.0, 1275274390000.0, -51534381390.0, 734926455.1, -4237922.726, 8511.937935},
    {24995805700000.0, 424441966400.0, 3733650367.0, 22459040.02, 102042.605, 354.9632885, 1.0}};

// J0(x) for |x| >= 8. Error 1.7e-10 up to x = 1e6.
inline constexpr Wave kJ0Large = {
    0.785398164,
    {1.0, -0.001098628627, 2.734510407e-05, -2.073370639e-06, 2.093887211e-07},
    {-0.01562499995, 0.0001430488765, -6.911147651e-06, 7.621095161e-07, -9.34935152e-08}};

// Y0(x) for x >= 8. Error 1.7e-10 up to x = 1e6. One digit of the last coefficient is not J0's.
inline constexpr Wave kY0Large = {
    0.785398164,
    {1.0, -0.001098628627, 2.734510407e-05, -2.073370639e-06, 2.093887211e-07},
    {-0.01562499995, 0.0001430488765, -6.911147651e-06, 7.621095161e-07, -9.34945152e-08}};

// J1(x) for |x| >= 8 and Y1(x) for x >= 8. Error 2.4e-10 up to x = 1e6.
inline constexpr Wave kOrder1Large = {
    2.356194491,
    {1.0, 0.00183105, -3.516396496e-05, 2.457520174e-06, -2.40337019e-07},
    {0.04687499995, -0.0002002690873, 8.449199096e-06, -8.8228987e-07, 1.05787412e-07}};

// gam1 and gam2 of math_func_beschb for |x| <= 0.5: Chebyshev series in 8 x^2 - 1. Errors 9.3e-15
// and 2.7e-15.
inline constexpr std::array kGam1 = {-1.142022680371172, 0.006516511267076, 0.000308709017308, -3.470626964e-06, 6.943764e-09, 3.678e-11, -1.36e-13};
inline constexpr std::array kGam2 = {1.843740587300906, -0.076852840844786, 0.001271927136655, -4.971736704e-06, -3.312612e-08, 2.4231e-10, -1.7e-13, -1e-15};

// clang-format on

}  // namespace quantiverse::bessel
