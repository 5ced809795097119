#include "quantity/conversion.h"

#include <gtest/gtest.h>

#include "quantity/unit_expression.h"

namespace quantiverse {
namespace {

UnitDef unit_of(std::string_view text) {
  Units units;
  Cursor expptr(text);
  UnitDef unit;
  TextBuf err;
  EXPECT_TRUE(parse_unit_expression(units, expptr, unit, err)) << text;
  return unit;
}

// To the last bit: a division and a subtraction in front of it, a product and a sum behind.
TEST(Conversion, OrderOfArithmetic) {
  const double x = 20.1;
  const struct {
    const char* unit;
    double to, from;
  } cases[] = {{"degC", (x + 273.15) / 1.0, x * 1.0 - 273.15},
               {"degF", (x + 459.67) / 1.8, x * 1.8 - 459.67},
               {"(degF)", (x + 459.67) / 1.8, x * 1.8 - 459.67},
               {"degR", x / 1.8, x * 1.8},
               {"degFdiff", x / 1.8, x * 1.8},
               {"degC/s", x, x},
               {"km", x / 0.001, x * 0.001},
               {"ft", x / 3.28083989501312, x * 3.28083989501312},
               {"km/hr", x / (0.001 / 0.000277777777778), x * (0.001 / 0.000277777777778)}};
  for (const auto& c : cases) {
    const UnitDef unit = unit_of(c.unit);
    const DimValue value{true, {x, 0, -x}, {9, 9, 9, 9, 9, 9, 9, 9}};
    TextBuf err;
    const DimValue to = convert_non_affine_ToMKS_vec_full(value, unit, err);
    const DimValue from = convert_non_affine_FromMKS_vec_full(value, unit);
    EXPECT_EQ(to.comp[0], c.to) << c.unit;
    EXPECT_EQ(from.comp[0], c.from) << c.unit;
    // The offset goes to every component, the dimension is the unit's.
    EXPECT_EQ(to.comp[1], -unit.offset / unit.w0) << c.unit;
    EXPECT_EQ(from.comp[2], -x * unit.w0 + unit.offset) << c.unit;
    EXPECT_TRUE(to.vector && from.vector);
    EXPECT_TRUE(to.exps == unit.exps && from.exps == unit.exps) << c.unit;
    EXPECT_TRUE(err.is_empty_text());
  }
}

TEST(Conversion, ByZero) {
  TextBuf err;
  err.append_text("first ");
  const DimValue value{true, {1, 2, 3}, {}};
  const UnitDef nothing = unit_of("lightyear^30");
  EXPECT_EQ(nothing.w0, 0.0);
  const DimValue result = convert_non_affine_ToMKS_vec_full(value, nothing, err);
  EXPECT_TRUE(dim_is_null(result));
  EXPECT_FALSE(result.vector);
  EXPECT_EQ(err.text(), "first ERROR: w0 divide by zero in convert_non_affine_ToMKS_vec_full.\n");
  EXPECT_EQ(convert_non_affine_FromMKS_vec_full(value, nothing).exps[kSlotLength], 30);
}

}  // namespace
}  // namespace quantiverse
