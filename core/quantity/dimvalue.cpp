#include "quantity/dimvalue.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "text/numbers.h"

namespace quantiverse {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

bool all_zero(const Exponents& exps) {
  return std::all_of(exps.begin(), exps.end(), [](double e) { return e == 0.0; });
}

bool slots_match(const Exponents& a, const Exponents& b, Slot slot) {
  return exponents_match(a[slot], b[slot]);
}

// Is a component other than `index` different from zero? Index 0 names none.
bool others_are_set(const DimValue& v, int index) {
  if (index < 1 || index > 3) return false;
  for (int other = 1; other <= 3; ++other) {
    if (other != index && v.comp[static_cast<std::size_t>(other - 1)] != 0.0) return true;
  }
  return false;
}

}  // namespace

bool exponents_match(double a, double b) { return !(std::fabs(a - b) > kExponentTolerance); }

bool is_overflow_mark(double x) { return x == kInfinity; }

DimValue overflow_value() {
  DimValue v;
  v.comp[0] = kInfinity;
  return v;
}

bool dim_is_dimensionless(const DimValue& v) {
  const Exponents& e = v.exps;
  return e[kSlotTime] == 0.0 && e[kSlotMass] == 0.0 && e[kSlotLength] == 0.0 &&
         e[kSlotTemperature] == 0.0 && e[kSlotDifference] == 0.0 && e[kSlotCharge] == 0.0;
}

bool dim_is_pure_radian(const DimValue& v) {
  return v.exps[kSlotAngle] == 1.0 && v.exps[kSlotAmount] == 0.0 && dim_is_dimensionless(v);
}

bool dim_is_null(const DimValue& v) {
  return v.comp[0] == 0.0 && v.comp[1] == 0.0 && v.comp[2] == 0.0 && all_zero(v.exps);
}

bool dim_same_units(const Exponents& a, const Exponents& b) {
  return slots_match(a, b, kSlotTime) && slots_match(a, b, kSlotMass) &&
         slots_match(a, b, kSlotLength) && slots_match(a, b, kSlotCharge) &&
         exponents_match(a[kSlotDifference] + a[kSlotTemperature],
                         b[kSlotDifference] + b[kSlotTemperature]);
}

bool dim_same_units_clear_angle(DimValue& a, DimValue& b) {
  for (std::size_t slot = kSlotTime; slot < kSlotCount; ++slot) {
    if (!exponents_match(a.exps[slot], b.exps[slot])) return false;
  }
  a.exps[kSlotAngle] = 0.0;
  b.exps[kSlotAngle] = 0.0;
  return true;
}

bool dim_reconcile_for_add(DimValue& a, DimValue& b) {
  if (dim_same_units(a.exps, b.exps)) return true;
  if (dim_is_null(a)) {
    a = DimValue{b.vector, {}, b.exps};
    return true;
  }
  if (dim_is_null(b)) {
    b = DimValue{a.vector, {}, a.exps};
    return true;
  }
  return false;
}

bool dim_components_compatible(const DimValue& a, int ia, const DimValue& b, int ib) {
  if (dim_same_units(a.exps, b.exps)) return true;
  return !others_are_set(a, ia) && !others_are_set(b, ib);
}

void dim_normalize_after_product(DimValue& v) {
  Exponents& e = v.exps;
  if (e[kSlotDifference] != 0.0) {
    Exponents others = e;
    others[kSlotDifference] = 0.0;
    if (!all_zero(others)) {
      e[kSlotTemperature] += e[kSlotDifference];
      e[kSlotDifference] = 0.0;
    }
  }
  if (e[kSlotLength] != 0.0) e[kSlotAngle] = 0.0;
}

DimValue dim_power(const DimValue& base, double p) {
  const double x = base.comp[0];
  DimValue result;
  result.vector = base.vector;
  if (x == 0.0 && p == 0.0) return result;
  if (is_overflow_mark(x) || (x < 0.0 && p != std::floor(p))) {
    result = overflow_value();
    if (base.vector) result.comp.fill(kInfinity);
    return result;
  }
  result.comp[0] = std::pow(x, p);
  if (base.vector) {
    result.comp[1] = std::pow(base.comp[1], p);
    result.comp[2] = std::pow(base.comp[2], p);
  }
  for (std::size_t slot = 0; slot < kSlotCount; ++slot) result.exps[slot] = base.exps[slot] * p;
  return result;
}

DimValue dim_pack_ints3(int i, int j, int k) {
  DimValue v;
  v.exps[kSlotCharge] = i;
  v.exps[kSlotTemperature] = j;
  v.exps[kSlotAmount] = k;
  return v;
}

DimValue dim_pack_ints2(int i, int j) {
  DimValue v;
  v.exps[kSlotCharge] = i;
  v.exps[kSlotDifference] = j;
  return v;
}

Ints3 dim_unpack_ints3(const DimValue& v) {
  return {truncate_to_int32(v.exps[kSlotCharge]), truncate_to_int32(v.exps[kSlotTemperature]),
          truncate_to_int32(v.exps[kSlotAmount])};
}

Ints2 dim_unpack_ints2(const DimValue& v) {
  return {truncate_to_int32(v.exps[kSlotCharge]), truncate_to_int32(v.exps[kSlotDifference])};
}

}  // namespace quantiverse
