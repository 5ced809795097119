#include "language/arithmetic.h"

#include <gtest/gtest.h>

#include <limits>

#include "calls.h"

namespace quantiverse::test {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// A bare zero takes on any dimension, and becomes a vector where the dimensions differ. The left
// operand's exponents stay.
TEST(Arithmetic, AddsAndSubtracts) {
  expect_answers(R"(
    1 ft + 0                 |  = 0.3048 m
    0 - 1 ft                 |  = -0.3048 m
    0 m + 1 s                | ERROR:  Adding incompatible units: 'm' AND 's'.
    1 m + 3                  | ERROR:  Adding incompatible units: 'm' AND 'Dimensionless'.
    FPS ~ 1 s + 1 m          | ERROR:  Adding incompatible units: 's' AND 'ft'.
    3 m mol - 4 m            |  = -1 m mol
    [1,2,3] m + [1,1,1] ft   |  = [ 1.3048 , 2.3048 , 3.3048 ] m
    [1,2,3] + 0              | ERROR:  Adding different size vectors.
    0 + [1,2,3]              | ERROR:  Adding different size vectors.
    0 + [1,2,3] m            |  = [ 1 , 2 , 3 ] m
    [1,2,3] m - 0            |  = [ 1 , 2 , 3 ] m
    1 + [1,2,3] m            | ERROR:  Adding different size vectors.
    1 - [1,2,3]              | ERROR:  Subtracting different size vectors.
  )");
}

TEST(Arithmetic, MultipliesDividesAndNegates) {
  expect_answers(R"(
    [1,2,3]*2 m              |  = [ 2 , 4 , 6 ] m
    [1,2,3]/2                |  = [ 0.5 , 1 , 1.5 ]
    [1,2,3]*[1,2,3]          | ERROR:  Multiplying vectors -- not defined.
    2/[1,2,3]                | ERROR:  Dividing by a vector -- not defined.
    [1]/[1e999]              | ERROR:  Dividing by a vector -- not defined.
    0/0                      | ERROR: Numerical over or underflow while dividing.
    2 rad*3 m/(1 m)          |  = 6
    (6 rad)/(2 m)*(2 m)      |  = 6
    (6 J)/(2 degKdiff)       |  = 3 kg m^2 / s^2 degK
  )");
}

// The domain comes ahead of the exponent's dimension, and the result isn't looked at.
TEST(Arithmetic, Exponentiates) {
  expect_answers(R"(
    (0 m)^(1 m - 1 m)        |  = 0
    0^-1                     |  = inf
    (-8 m)^(0.5 s)           | ERROR: Numerical over or underflow while exponentiating.
    2^(1.23456789 m/s)       | ERROR: Dimensional exponent: 1.23457 m / s.
    2^[3,4]                  |  = 8
    [2,3]^(1 m)              | ERROR:  Exponentiating a vector -- not defined.
  )");
}

// An infinite operand is reported ahead of dimensions and sizes, but only in the first component.
TEST(Arithmetic, ReportsInfiniteOperands) {
  expect_answers(R"(
    x = 1e999                | x = inf
    x = 1e999 ~ x + 1 m      | ERROR:  Numerical over or underflow while adding.
    x = [1e999] ~ 1 + x      | ERROR:  Numerical over or underflow while adding.
    x = 1e999 ~ x - 1        | ERROR: Numerical over or underflow while subtracting.
    x = 1e999 ~ x * 0        | ERROR: Numerical over or underflow while multiplying.
    x = [1e999] ~ x * x      | ERROR:  Multiplying vectors -- not defined.
    x = 1e999 ~ 1 / x        | ERROR: Numerical over or underflow while dividing.
    x = 1e999 ~ 2^x          | ERROR: Numerical over or underflow while exponentiating.
    x = 1e999 ~ -x           | ERROR: Numerical over or underflow while negating.
    5 km^200                 | ERROR: w0 divide by zero in convert_non_affine_ToMKS_vec_full.
    [1,1e999,3] + [1,1,1]    |  = [ 2 , inf , 4 ]
  )");
}

TEST(Arithmetic, BuildsVectors) {
  expect_answers(R"(
    [1,2,]                   |  = [ 0 , 1 , 2 ]
    [0, 0, 1 ft]             |  = [ 0 , 0 , 0.3048 ] m
    [1 m, 0, 2 ft]           |  = [ 1 , 0 , 0.6096 ] m
    [1 rad, 2, 3]            |  = [ 1 , 2 , 3 ] rad
    [1, 1 ft]                | ERROR:  All vector components must have same units.
    [1 m, 0, 2 s]            | ERROR:  All vector components must have same units.
    [[1], 2, 3 m]            | ERROR:  All vector components must have same units.
    [0, [1,2,3] m]           | ERROR:  All vector components must be scalars.
    [[1,2]]                  | ERROR:  All vector components must be scalars.
    [1, 2, [3]]              | ERROR:  All vector components must be scalars.
  )");
}

// The plain operations, on values that a line can't bring about.
enum Operation { kAdd, kSubtract, kMultiply, kDivide, kPower, kNegate, kAssign, kToNumber };
constexpr UnitDef kOffset{-6, 2, {0, 0, 0, 0, 1}};  // of a temperature

Called done(Operation operation, const std::vector<DimValue>& operands,
            const UnitDef& unit = kOffset) {
  Units units;
  ValueStack stack;
  TextBuf err;
  for (const DimValue& v : operands) stack.push_value(v);
  if (operation >= kAssign) stack.push_unit(unit);
  // clang-format off
  switch (operation) {
    case kAdd: stack_add(stack, units, err); break;
    case kSubtract: stack_subtract(stack, units, err); break;
    case kMultiply: stack_multiply(stack, err); break;
    case kDivide: stack_divide(stack, err); break;
    case kPower: stack_exponentiate(stack, units, err); break;
    case kNegate: stack_negate(stack, err); break;
    case kAssign: stack_assign_units(stack, err); break;
    case kToNumber: stack_to_number(stack, err); break;
  }
  // clang-format on
  EXPECT_EQ(stack.size(), 1U);
  return {stack.pop_value(), std::string(err.text())};
}

TEST(Arithmetic, ComparesExponentsWithinTheirTolerance) {
  const auto adds = [](const Exponents& a, const Exponents& b) {
    return done(kAdd, {scalar(1, a), scalar(2, b)}).err.empty();
  };
  EXPECT_TRUE(adds(slot(kSlotAngle, 7), slot(kSlotAmount, 7)));
  for (const Slot s :
       {kSlotTime, kSlotMass, kSlotLength, kSlotTemperature, kSlotDifference, kSlotCharge}) {
    EXPECT_TRUE(adds(slot(s, 1e-5), {})) << int{s};
    EXPECT_FALSE(adds(slot(s, 1.1e-5), {})) << int{s};
  }
  ValueStack stack;
  TextBuf err;
  for (const double e : {0.0, 0.9e-5, -0.9e-5}) stack.push_value(scalar(1, slot(kSlotMass, e)));
  stack_build_vector(3, stack, err);  // each is compared with each
  EXPECT_FALSE(err.is_empty_text());
  // Both temperatures off by less than the tolerance, their sum by more: the strict comparison
  // lets them pass, and the angle goes.
  Exponents warm = slot(kSlotAngle);
  warm[kSlotTemperature] = warm[kSlotDifference] = 0.9e-5;
  const Called sum = done(kAdd, {scalar(1, warm), scalar(2, slot(kSlotAngle))});
  warm[kSlotAngle] = 0;
  EXPECT_TRUE(sum.err.empty() && same_value(sum.value, scalar(3, warm)));
}

// Each leaves one result, with an error too. Odd numbers but +infinity pass, and an operand that
// isn't there is zero.
TEST(Arithmetic, Results) {
  const DimValue mark = overflow_value();
  const DimValue metre = scalar(2, slot(kSlotLength));
  const DimValue v = vec(1, 2, 3, slot(kSlotMass));
  struct Case {
    Operation operation;
    std::vector<DimValue> operands;
    DimValue expected;
    bool fails;
  };
  const Case cases[] = {
      {kAdd, {scalar(kNan), scalar(1)}, scalar(kNan), false},
      {kAdd, {scalar(2)}, scalar(2), false},
      {kAdd, {mark, v}, mark, true},
      {kAdd, {metre, v}, {}, true},
      {kAdd, {metre, scalar(1)}, {}, true},
      {kSubtract, {scalar(-kInf), scalar(1)}, scalar(-kInf), false},
      {kSubtract, {scalar(2)}, scalar(-2), false},
      {kSubtract, {v, mark}, mark, true},
      {kMultiply, {vec(1, kInf, kNan), scalar(2)}, vec(2, kInf, kNan), false},
      {kMultiply, {v, v}, {}, true},
      {kMultiply, {v, mark}, mark, true},
      {kDivide, {metre, v}, {}, true},
      {kDivide, {v, {}}, mark, true},
      {kNegate, {vec(0, -0.0, -kInf)}, vec(-0.0, 0, kInf), false},
      {kNegate, {vec(kInf, 1, 1, slot(kSlotMass))}, mark, true},
      {kPower, {v, metre}, {}, true},
      {kPower, {metre, metre}, {}, true},
      {kPower, {scalar(-1), scalar(0.5)}, mark, true},
      {kAssign, {vec(1, 2, 3, slot(kSlotAngle))}, vec(3.5, 4, 4.5, kOffset.exps), false},
      {kAssign, {scalar(1, slot(kSlotTime))}, mark, true},
      {kAssign, {scalar(kInf)}, mark, true},
      {kToNumber, {vec(1, 2, 3, slot(kSlotDifference))}, vec(-4, -2, 0), false},
      {kToNumber, {v}, vec(-4, -2, 0, kOffset.exps), true},
  };
  for (const Case& c : cases) {
    const Called result = done(c.operation, c.operands);
    EXPECT_EQ(!result.err.empty(), c.fails) << &c - cases;
    EXPECT_TRUE(same_value(result.value, c.expected)) << &c - cases;
  }
}

TEST(Arithmetic, UnitMessages) {
  const std::string over = "ERROR: Numerical over or underflow while unit_assignment.\n";
  EXPECT_EQ(done(kAssign, {scalar(1)}, {kInf, 1, {}}).err, over);
  EXPECT_EQ(done(kAssign, {scalar(1)}, {0, kInf, {}}).err, over);
  EXPECT_EQ(done(kAssign, {scalar(kInf, kOffset.exps)}).err,
            "ERROR: Units assignment requires dimensionless value before it.\n");
  EXPECT_EQ(done(kToNumber, {scalar(1)}).err, "ERROR: Requested units incompatible.\n");
}

}  // namespace
}  // namespace quantiverse::test
