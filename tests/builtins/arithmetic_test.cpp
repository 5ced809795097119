#include "language/arithmetic.h"

#include <gtest/gtest.h>

#include <limits>

#include "calls.h"

namespace quantiverse::test {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

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
