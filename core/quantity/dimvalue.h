#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace quantiverse {

// What a slot of the exponents counts. Charge, not current, is the electric base. The angle is a
// real exponent, and a temperature difference has a slot of its own beside the temperature.
enum Slot : std::uint8_t {
  kSlotAngle,
  kSlotTime,
  kSlotMass,
  kSlotLength,
  kSlotTemperature,
  kSlotAmount,
  kSlotDifference,
  kSlotCharge,
  kSlotCount
};

// Exponents are floating: `m^0.5` is a dimension.
using Exponents = std::array<double, kSlotCount>;

// Two exponents are the same unless they differ by more than this.
inline constexpr double kExponentTolerance = 1e-5;
bool exponents_match(double a, double b);

// Every value of the language: a scalar, or a vector of three components, in MKS base units
// whatever unit was typed. A scalar uses comp[0]; nothing reads the other two.
struct DimValue {
  bool vector = false;
  std::array<double, 3> comp{};
  Exponents exps{};

  DimValue() = default;
  DimValue(bool v, const std::array<double, 3>& c, const Exponents& e)
      : vector(v), comp(c), exps(e) {}
  // Copied number by number: a value is mostly copied right after its numbers were written, and
  // a wider load than those stores has to wait for them.
  DimValue(const DimValue& other) : vector(other.vector) { copy_numbers(other); }
  DimValue& operator=(const DimValue& other) {
    vector = other.vector;
    copy_numbers(other);
    return *this;
  }
  ~DimValue() = default;

 private:
  void copy_numbers(const DimValue& other) {
    for (std::size_t i = 0; i < comp.size(); ++i) comp[i] = other.comp[i];
    for (std::size_t i = 0; i < exps.size(); ++i) exps[i] = other.exps[i];
  }
};

// A unit expression that has been read: value in the unit = MKS value * w0 + offset.
// Beware of the direction: w0 counts units per MKS base unit, so `km` has 0.001.
struct UnitDef {
  double offset = 0.0;  // other than 0 only for a lone degC or degF
  double w0 = 0.0;
  Exponents exps{};
};

// The mark of a result that failed numerically: +infinity in the first component.
bool is_overflow_mark(double x);
DimValue overflow_value();

// No dimension that a function would mind: angle and amount count as plain numbers.
bool dim_is_dimensionless(const DimValue& v);
// An angle to the first power and nothing else.
bool dim_is_pure_radian(const DimValue& v);
// Exactly zero, and without any exponent.
bool dim_is_null(const DimValue& v);

// The comparison of dimensions: angle and amount are left out, and temperature and temperature
// difference count together.
bool dim_same_units(const Exponents& a, const Exponents& b);
// The strict one: everything but the angle, each slot by itself. If true, both lose their angle.
bool dim_same_units_clear_angle(DimValue& a, DimValue& b);

// May `a` and `b` be added or compared? A null value takes on flag and dimension of the other,
// so that `0 + 5 m` is 5 m.
bool dim_reconcile_for_add(DimValue& a, DimValue& b);

// May component `ia` (1 to 3, or 0 for the whole) of `a` be replaced by `ib` of `b`? A vector
// changes its dimension that way only while its other components are zero.
bool dim_components_compatible(const DimValue& a, int ia, const DimValue& b, int ib);

// Tidies the exponents of a product or quotient: a difference of temperature that is mixed with
// anything else counts as a temperature, and a radius times an angle is a length.
void dim_normalize_after_product(DimValue& v);

// `base` to the power `p`, exponents included. Only comp[0] decides the domain; 0^0 is 0. Out of
// the domain the result is a scalar overflow mark, for a vector in all three components.
DimValue dim_power(const DimValue& base, double p);

// Small integers travel through a compiled program as values: the description of a call
// (function number, kind, count of arguments) and of a variable (its number, its component).
DimValue dim_pack_ints3(int i, int j, int k);
DimValue dim_pack_ints2(int i, int j);
struct Ints3 {
  int i, j, k;
};
struct Ints2 {
  int i, j;
};
Ints3 dim_unpack_ints3(const DimValue& v);
Ints2 dim_unpack_ints2(const DimValue& v);

}  // namespace quantiverse
