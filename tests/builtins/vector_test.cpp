#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "calls.h"

namespace quantiverse::test {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

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

TEST(Constant, Digits) {
  EXPECT_EQ(number("pi", {}), std::acos(-1.0));
  EXPECT_EQ(number("euler", {}), 0.5772156649015328606065);
  EXPECT_EQ(number("grav", {}), 9.806652);  // the last digit is meant
  EXPECT_EQ(number("CLight", {}), 299792458);
  EXPECT_EQ(number("Planck", {}), 6.62606896e-34);
}

}  // namespace
}  // namespace quantiverse::test
