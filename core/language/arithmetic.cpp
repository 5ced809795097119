#include "language/arithmetic.h"

#include <cmath>

#include "quantity/conversion.h"
#include "quantity/unit_text.h"

namespace quantiverse {
namespace {

// The words of one operation; they differ in more than the verb, and are part of its answers.
struct SumWords {
  const char* overflow;
  const char* sizes;
  const char* dimensions;
};
constexpr SumWords kAdding = {"ERROR:  Numerical over or underflow while adding.\n",
                              "ERROR:  Adding different size vectors.\n",
                              "ERROR:  Adding incompatible units: '"};
constexpr SumWords kSubtracting = {"ERROR: Numerical over or underflow while subtracting.\n",
                                   "ERROR:  Subtracting different size vectors.\n",
                                   "ERROR: Subtracting incompatible units: '"};

void report_dimensions(const char* words, const DimValue& a, const DimValue& b, Units& units,
                       TextBuf& err) {
  err.append_text(words);
  render_dimension_text(err, a.exps, units);
  err.append_text("' AND '");
  render_dimension_text(err, b.exps, units);
  err.append_text("'.\n");
}

// The operations work in place: `a` becomes the result, and b is of no interest any more.

// b is multiplied by `sign`, which is exact.
void sum(DimValue& a, DimValue& b, double sign, const SumWords& words, Units& units, TextBuf& err) {
  if (is_overflow_mark(a.comp[0]) || is_overflow_mark(b.comp[0])) {
    err.append_text(words.overflow);
    a = overflow_value();
    return;
  }
  const bool reconciled = dim_reconcile_for_add(a, b);
  if (a.vector != b.vector) {
    err.append_text(words.sizes);
    a = {};
    return;
  }
  if (!reconciled && !dim_same_units_clear_angle(a, b)) {
    report_dimensions(words.dimensions, a, b, units, err);
    a = {};
    return;
  }
  for (std::size_t i = 0; i < a.comp.size(); ++i) a.comp[i] += sign * b.comp[i];
}

void product(DimValue& a, const DimValue& b, TextBuf& err) {
  if (a.vector && b.vector) {
    err.append_text("ERROR:  Multiplying vectors -- not defined.\n");
    a = {};
    return;
  }
  if (is_overflow_mark(a.comp[0]) || is_overflow_mark(b.comp[0])) {
    err.append_text("ERROR: Numerical over or underflow while multiplying.\n");
    a = overflow_value();
    return;
  }
  if (a.vector) {
    for (double& c : a.comp) c *= b.comp[0];
  } else if (b.vector) {
    const double factor = a.comp[0];
    for (std::size_t i = 0; i < a.comp.size(); ++i) a.comp[i] = b.comp[i] * factor;
    a.vector = true;
  } else {
    a.comp = {a.comp[0] * b.comp[0]};
  }
  for (std::size_t i = 0; i < kSlotCount; ++i) a.exps[i] += b.exps[i];
  dim_normalize_after_product(a);
}

void quotient(DimValue& a, const DimValue& b, TextBuf& err) {
  if (b.vector) {
    err.append_text("ERROR:  Dividing by a vector -- not defined.\n");
    a = {};
    return;
  }
  if (is_overflow_mark(a.comp[0]) || is_overflow_mark(b.comp[0]) || b.comp[0] == 0.0) {
    err.append_text("ERROR: Numerical over or underflow while dividing.\n");
    a = overflow_value();
    return;
  }
  for (double& c : a.comp) c /= b.comp[0];
  for (std::size_t i = 0; i < kSlotCount; ++i) a.exps[i] -= b.exps[i];
  dim_normalize_after_product(a);
}

// A vector as exponent isn't refused: its first component counts.
void power(DimValue& a, const DimValue& b, Units& units, TextBuf& err) {
  const double x = a.comp[0];
  const double y = b.comp[0];
  if (a.vector) {
    err.append_text("ERROR:  Exponentiating a vector -- not defined.\n");
    a = {};
    return;
  }
  const bool overflow = is_overflow_mark(x) || is_overflow_mark(y);
  if (!overflow && x == 0.0 && y == 0.0) {
    a = {};
    return;
  }
  if (overflow || (x < 0.0 && y != std::floor(y))) {
    err.append_text("ERROR: Numerical over or underflow while exponentiating.\n");
    a = overflow_value();
    return;
  }
  if (!dim_is_dimensionless(b)) {
    err.append_text("ERROR: Dimensional exponent: ");
    err.append_double(y);
    err.append_text(" ");
    render_dimension_text(err, b.exps, units);
    err.append_text(".\n");
    a = {};
    return;
  }
  a = dim_power(a, y);
}

DimValue with_unit(const DimValue& v, const UnitDef& unit, TextBuf& err) {
  if (!dim_is_dimensionless(v)) {
    err.append_text(kNeedsDimensionless);
    return overflow_value();
  }
  if (is_overflow_mark(v.comp[0]) || is_overflow_mark(unit.offset) || is_overflow_mark(unit.w0)) {
    err.append_text("ERROR: Numerical over or underflow while unit_assignment.\n");
    return overflow_value();
  }
  return convert_non_affine_ToMKS_vec_full(v, unit, err);
}

DimValue built_vector(int count, ValueStack& stack, TextBuf& err) {
  std::array<DimValue, 3> c;
  for (int i = count; i > 0; --i) c[static_cast<std::size_t>(i - 1)] = stack.pop_value();
  const bool same =
      (count < 2 || dim_reconcile_for_add(c[0], c[1])) &&
      (count < 3 || (dim_reconcile_for_add(c[0], c[2]) && dim_reconcile_for_add(c[1], c[2])));
  if (!same) {
    err.append_text("ERROR:  All vector components must have same units.\n");
    return {};
  }
  if (c[0].vector || c[1].vector || c[2].vector) {
    err.append_text("ERROR:  All vector components must be scalars.\n");
    return {};
  }
  return {true, {c[0].comp[0], c[1].comp[0], c[2].comp[0]}, c[0].exps};
}

}  // namespace

void stack_add(ValueStack& stack, Units& units, TextBuf& err) {
  stack.combine([&](DimValue& a, DimValue& b) { sum(a, b, 1.0, kAdding, units, err); });
}

void stack_subtract(ValueStack& stack, Units& units, TextBuf& err) {
  stack.combine([&](DimValue& a, DimValue& b) { sum(a, b, -1.0, kSubtracting, units, err); });
}

void stack_multiply(ValueStack& stack, TextBuf& err) {
  stack.combine([&](DimValue& a, const DimValue& b) { product(a, b, err); });
}

void stack_divide(ValueStack& stack, TextBuf& err) {
  stack.combine([&](DimValue& a, const DimValue& b) { quotient(a, b, err); });
}

void stack_exponentiate(ValueStack& stack, Units& units, TextBuf& err) {
  stack.combine([&](DimValue& a, const DimValue& b) { power(a, b, units, err); });
}

void stack_negate(ValueStack& stack, TextBuf& err) {
  DimValue& v = stack.top_value();
  if (is_overflow_mark(v.comp[0])) {
    err.append_text("ERROR: Numerical over or underflow while negating.\n");
    v = overflow_value();
  } else {
    for (double& c : v.comp) c = -c;
  }
}

void stack_assign_units(ValueStack& stack, TextBuf& err) {
  const UnitDef unit = stack.pop_unit();
  const DimValue v = stack.pop_value();
  stack.push_value(with_unit(v, unit, err));
}

void stack_to_number(ValueStack& stack, TextBuf& err) {
  const UnitDef unit = stack.pop_unit();
  const DimValue v = stack.pop_value();
  DimValue number = convert_non_affine_FromMKS_vec_full(v, unit);
  if (dim_same_units(v.exps, number.exps)) {
    number.exps = {};
  } else {
    err.append_text("ERROR: Requested units incompatible.\n");
  }
  stack.push_value(number);
}

void stack_build_vector(int count, ValueStack& stack, TextBuf& err) {
  const DimValue vector = built_vector(count, stack, err);
  stack.push_value(vector);
}

}  // namespace quantiverse
