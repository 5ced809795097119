#include "quantity/dimvalue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quantiverse {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

DimValue number(double x) { return {false, {x}, {}}; }
DimValue with(int slot, double exponent, double x = 1.0) {
  DimValue v = number(x);
  v.exps[static_cast<std::size_t>(slot)] = exponent;
  return v;
}

// Which predicates mind which slot, and how much of it.
TEST(Predicates, Slots) {
  for (int slot = 0; slot < kSlotCount; ++slot) {
    const bool ignored = slot == kSlotAngle || slot == kSlotAmount;
    EXPECT_EQ(dim_is_dimensionless(with(slot, 1e-300)), ignored) << slot;
    EXPECT_FALSE(dim_is_null(with(slot, 1e-300, 0.0))) << slot;
    EXPECT_EQ(dim_is_pure_radian(with(slot, 1.0)), slot == kSlotAngle) << slot;
    for (const double exponent : {1e-5, -1e-5, 1.1e-5, -1.1e-5, 1.0}) {
      const bool near = std::fabs(exponent) <= 1e-5;
      DimValue a = with(slot, exponent);
      DimValue b = number(1);
      EXPECT_EQ(dim_same_units(a.exps, b.exps), ignored || near) << slot << " " << exponent;
      EXPECT_EQ(dim_reconcile_for_add(a, b), ignored || near) << slot << " " << exponent;
      EXPECT_EQ(dim_components_compatible(a, 1, b, 2), ignored || near) << slot;
      EXPECT_EQ(dim_same_units_clear_angle(a, b), slot == kSlotAngle || near) << slot;
    }
    EXPECT_TRUE(dim_same_units(with(slot, kNaN).exps, number(1).exps)) << slot;
  }
  DimValue radian_and_more = with(kSlotAngle, 1.0);
  radian_and_more.exps[kSlotAmount] = 1e-9;
  EXPECT_FALSE(dim_is_pure_radian(radian_and_more));
  EXPECT_FALSE(dim_is_pure_radian(with(kSlotAngle, 1.000001)));
  EXPECT_TRUE(dim_is_null(number(-0.0)));
  EXPECT_FALSE(dim_is_null({true, {0, 0, 1e-300}, {}}));
}

TEST(Predicates, TemperatureAndDifferenceCountTogether) {
  DimValue a = with(kSlotTemperature, 3);
  DimValue b = with(kSlotDifference, 2);
  b.exps[kSlotTemperature] = 1;
  EXPECT_TRUE(dim_same_units(a.exps, b.exps));
  EXPECT_TRUE(dim_reconcile_for_add(a, b));
  EXPECT_FALSE(dim_same_units_clear_angle(a, b));
}

TEST(Predicates, StrictMatchTakesTheAnglesAway) {
  DimValue a = with(kSlotAngle, 2);
  DimValue b = with(kSlotAngle, 5);
  EXPECT_TRUE(dim_same_units_clear_angle(a, b));
  EXPECT_EQ(a.exps, Exponents{});
  EXPECT_EQ(b.exps, Exponents{});
  a.exps[kSlotAngle] = 2;
  b.exps[kSlotAmount] = 1;
  EXPECT_FALSE(dim_same_units_clear_angle(a, b));
  EXPECT_EQ(a.exps[kSlotAngle], 2);
}

TEST(ReconcileForAdd, AnExactZeroTakesFlagAndDimension) {
  const DimValue vector{true, {1, 2, 3}, with(kSlotLength, 1).exps};
  for (const bool first : {true, false}) {
    DimValue zero = number(0);
    DimValue other = vector;
    EXPECT_TRUE(first ? dim_reconcile_for_add(zero, other) : dim_reconcile_for_add(other, zero));
    EXPECT_TRUE(zero.vector);
    EXPECT_EQ(zero.comp, (std::array<double, 3>{}));
    EXPECT_EQ(zero.exps, vector.exps);
    EXPECT_EQ(other.comp, vector.comp);
  }
  DimValue one = number(1);
  DimValue metre = with(kSlotLength, 1);
  DimValue no_seconds = with(kSlotTime, 1, 0);
  EXPECT_FALSE(dim_reconcile_for_add(one, metre));
  EXPECT_FALSE(dim_reconcile_for_add(no_seconds, metre));
  // Where the dimensions match already, not even the flag changes.
  DimValue zero = number(0);
  DimValue plain{true, {1, 2, 3}, {}};
  EXPECT_TRUE(dim_reconcile_for_add(zero, plain));
  EXPECT_FALSE(zero.vector);
}

TEST(ComponentsCompatible, OtherComponentsMustBeZero) {
  const DimValue x{true, {1, 0, 0}, with(kSlotLength, 1).exps};
  const DimValue y{true, {0, 1, 0}, {}};
  const DimValue z{true, {0, 0, kNaN}, {}};
  const struct {
    const DimValue &a, &b;
    int ia, ib;
    bool compatible;
  } cases[] = {{x, y, 1, 2, true},  {x, y, 2, 2, false}, {x, y, 3, 2, false}, {x, y, 1, 1, false},
               {x, y, 1, 3, false}, {x, y, 0, 0, true},  {x, y, 1, 0, true},  {x, y, 0, 3, false},
               {x, z, 1, 3, true},  {x, z, 1, 1, false}, {x, z, 1, 2, false}, {y, z, 3, 1, true}};
  for (const auto& c : cases) {
    EXPECT_EQ(dim_components_compatible(c.a, c.ia, c.b, c.ib), c.compatible) << c.ia << c.ib;
  }
}

TEST(NormalizeAfterProduct, MixedDifferencesAndAngles) {
  const struct {
    Exponents before, after;
  } cases[] = {{{0, 0, 0, 0, 0, 0, 2, 0}, {0, 0, 0, 0, 0, 0, 2, 0}},
               {{0, 0, 0, 0, 3, 0, 2, 0}, {0, 0, 0, 0, 5, 0, 0, 0}},
               {{0, 0, 0, 0, 0, 1, -1, 0}, {0, 0, 0, 0, -1, 1, 0, 0}},
               {{1, 0, 0, 0, 0, 0, 1, 0}, {1, 0, 0, 0, 1, 0, 0, 0}},
               {{1, 0, 0, 1e-9, 0, 0, 1, 0}, {0, 0, 0, 1e-9, 1, 0, 0, 0}},
               {{1, -1, 1, 0, 0, 0, 0, 1}, {1, -1, 1, 0, 0, 0, 0, 1}}};
  for (const auto& c : cases) {
    DimValue v{false, {1}, c.before};
    dim_normalize_after_product(v);
    EXPECT_EQ(v.exps, c.after);
  }
}

TEST(Power, Domain) {
  const struct {
    double base, p, result;
    bool fails;
  } cases[] = {{0, 0, 0, false},          {-0.0, 0, 0, false},     {0, -1, kInf, false},
               {0, 0.5, 0, false},        {2, 0, 1, false},        {-8, 3, -512, false},
               {-8, 1.0 / 3, kInf, true}, {-8, -2.5, kInf, true},  {kInf, 0, kInf, true},
               {kInf, -1, kInf, true},    {-kInf, 2, kInf, false}, {-kInf, 0.5, kInf, true},
               {2, 2000, kInf, false},    {-1, kNaN, kInf, true},  {kNaN, 0, 1, false}};
  for (const auto& c : cases) {
    const DimValue result = dim_power(with(kSlotLength, 2, c.base), c.p);
    EXPECT_EQ(result.comp[0], c.result) << c.base << "^" << c.p;
    const bool no_exponents = c.fails || (c.base == 0 && c.p == 0);
    EXPECT_EQ(result.exps[kSlotLength], no_exponents ? 0 : 2 * c.p) << c.base << "^" << c.p;
    EXPECT_EQ(result.comp[1], 0.0);
  }
  EXPECT_TRUE(std::isnan(dim_power(number(kNaN), 0.5).comp[0]));
}

// Only x decides; a failure loses the flag, but fills all three components.
TEST(Power, OfVectors) {
  const DimValue cubed = dim_power({true, {2, -1, kInf}, with(kSlotTime, 0.5).exps}, 3);
  EXPECT_TRUE(cubed.vector);
  EXPECT_EQ(cubed.comp, (std::array<double, 3>{8, -1, kInf}));
  EXPECT_EQ(cubed.exps, with(kSlotTime, 1.5).exps);
  EXPECT_TRUE(std::isnan(dim_power({true, {2, -1, 3}, {}}, 0.5).comp[1]));
  const DimValue zero = dim_power({true, {0, 5, 5}, with(kSlotTime, 1).exps}, 0);
  EXPECT_TRUE(zero.vector);
  EXPECT_EQ(zero.comp, (std::array<double, 3>{}));
  EXPECT_EQ(zero.exps, Exponents{});
  const DimValue failed = dim_power({true, {-2, 1, 1}, with(kSlotTime, 1).exps}, 0.5);
  EXPECT_FALSE(failed.vector);
  EXPECT_EQ(failed.comp, (std::array<double, 3>{kInf, kInf, kInf}));
  EXPECT_EQ(failed.exps, Exponents{});
}

TEST(PackedInts, KeepTheirSlots) {
  const DimValue three = dim_pack_ints3(-7, 2147483647, -2147483647 - 1);
  EXPECT_EQ(three.exps, (Exponents{0, 0, 0, 0, 2147483647, -2147483648.0, 0, -7}));
  const Ints3 ints3 = dim_unpack_ints3(three);
  EXPECT_TRUE(ints3.i == -7 && ints3.j == 2147483647 && ints3.k == -2147483647 - 1);
  const DimValue two = dim_pack_ints2(900, 3);
  EXPECT_EQ(two.exps, (Exponents{0, 0, 0, 0, 0, 0, 3, 900}));
  const Ints2 ints2 = dim_unpack_ints2(two);
  EXPECT_TRUE(ints2.i == 900 && ints2.j == 3);
}

}  // namespace
}  // namespace quantiverse
