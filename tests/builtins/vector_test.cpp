#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "calls.h"

namespace quantiverse::test {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(Vector, Lines) {
  expect_answers(R"(
    dot([1,2,3], 1)          | ERROR:  Computing dot() with scalars.
    dot([1,2,3] m, [1,1] s)  |  = 3 m s
    cross(1, [1])            | ERROR:  Computing cross() with scalars.
    cross([1,2,3] m, [4,5,6] m) |  = [ -3 , 6 , -3 ] m^2
    mag(5)                   | ERROR:  Computing mag() with scalars.
    mag([3,4,0] m)           |  = 5 m
    angle([1], 1 m)          | ERROR:  Computing angle() with scalars.
    angle([1] m, [1] s)      | ERROR:  Computing angle() with args of diff dimensions.
    angle([1,2,3], [2,4,6])  |  = 0.785398 rad
    angle([1] m, -[2] ft)    |  = -0.785398 rad
    PolarVec([1], 0 rad)     | ERROR:  Computing PolarVec() with vector.
    PolarVec(2 m, 0)         | ERROR:  PolarVec() second arg must be an angle.
    PolarVec(2, 1 rad mol)   | ERROR:  PolarVec() second arg must be an angle.
    polarvec(2 m, 30 deg)    |  = [ 1.73205 , 1 , 0 ] m
    PolarAngle(1)            | ERROR:  Computing PolarAngle() with scalars.
    PolarAngle([-1,0,5] m)   |  = 3.14159 rad
    component(5, [1])        | ERROR:  Computing component() with a scalar.
    v = [1] ~ v[v]           | ERROR:  Computing component() index cant be a vector.
    component([1], 9 m)      | ERROR:  Computing component() second arg has units.
    component([1,2,3] m, 3.99 rad) |  = 3 m
    v = [1] ~ v[0.99]        | ERROR:  Bad index in component().
    v = [1] ~ v[4]           | ERROR:  Bad index in component().
    lininterp(1,1,2,3,[4])   | ERROR:  Computing LinInterp() with a vector argument.
    lininterp(1 m, 1, 2, 1 m, 4 m) | ERROR:  Computing LinInterp() with X args of diff dimensions.
    lininterp(1, 1, 1, 1 m, 1) | ERROR:  Computing LinInterp() with Y args of diff dimensions.
    lininterp(1, 0, 1, 1, 1) | ERROR:  LinInterp() X1 and x2 must have diff values.
    lininterp(0, 0, 0.99e-7 mm, 1, 0) | ERROR:  LinInterp() X1 and x2 must have diff values.
    lininterp(0,0,1e-10,1,0) |  = 0
    lininterp(0, 0, 1 m, 10 s, 50 cm) |  = 5 s
    lininterp(1 m, 3 s, 2 m, 0, 0 m)  |  = 6 s
    lininterp(0, 1 rad, 1, 2, 0) |  = 1 rad
    mod(1, [1])              | ERROR:  Computing mod() of a vector.
    mod(1 s, 1 m)            | ERROR:  Computing mod() with args of diff dimensions.
    mod(-7, 2)               |  = -1
    mod(0, 2 m)              |  = 0 m
    mod(1e999, 2)            |  = inf
    mod(90 deg, 1 rad)       |  = 0.570796 rad
    abs([1])                 | ERROR:  Computing abs() of a vector.
    sign([1])                | ERROR:  Computing sign() of a vector.
    sign(-3 m)               |  = -1
    sign(1e999)              |  = 0
    Number([1,2,3] km)       |  = [ 1000 , 2000 , 3000 ]
    Number(20 degC, degF)    |  = 68
  )");
}

TEST(Vector, ValuesThatNoLineShows) {
  EXPECT_EQ(call("component", {vec(1, 2, 3), scalar(kNan)}).err,
            "ERROR:  Bad index in component().\n");
  const Exponents mass = slot(kSlotMass);
  EXPECT_TRUE(
      same_value(call("component", {vec(1, 2, 3, mass), scalar(3)}).value, scalar(3, mass)));
  EXPECT_TRUE(same_value(call("angle", {vec(kNan, 0, 0), vec(1, 0, 0)}).value, {}));
  // y and x are summed ahead of z; the other way round, the ones would be lost.
  EXPECT_GT(number("mag", {vec(1, 1, 1e8)}), 1e8);
  EXPECT_EQ(number("mag", {vec(1e8, 1, 1)}), 1e8);
  EXPECT_EQ(number("dot", {vec(1, 1e16, -1e16), vec(1, 1, 1)}), 0.0);
  EXPECT_EQ(number("dot", {vec(-1e16, 1e16, 1), vec(1, 1, 1)}), 1.0);
  // The product is taken before the quotient.
  EXPECT_EQ(number("lininterp", {{}, {}, scalar(1e10), scalar(1e300), scalar(1e10)}), kInf);
}

TEST(Constant, Lines) {
  expect_answers(R"(
    pi()                     |  = 3.14159
    euler()                  |  = 0.577216
    grav()                   |  = 9.80665 m / s^2
    gas()                    |  = 8.31434 kg m^2 / s^2 degK mol
    Boltzmann()              |  = 1.38065e-23 kg m^2 / s^2 degK
    CLight()                 |  = 2.99792e+08 m / s
    Planck()                 |  = 6.62607e-34 kg m^2 / s
    GEarth()                 |  = 6.67428e-11 m^3 / kg s^2
    StefanBoltzmann()        |  = 5.6704e-08 kg / s^3 degK^4
  )");
  EXPECT_EQ(number("pi", {}), std::acos(-1.0));
  EXPECT_EQ(number("euler", {}), 0.5772156649015328606065);
  EXPECT_EQ(number("grav", {}), 9.806652);  // the last digit is meant
  EXPECT_EQ(number("CLight", {}), 299792458);
  EXPECT_EQ(number("Planck", {}), 6.62606896e-34);
}

}  // namespace
}  // namespace quantiverse::test
