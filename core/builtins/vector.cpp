#include "builtins/vector.h"

#include <array>
#include <cmath>

#include "builtins/arguments.h"
#include "text/numbers.h"

namespace quantiverse {
namespace {

// The order of both sums is part of the result.
double dot_product(const DimValue& a, const DimValue& b) {
  return (a.comp[1] * b.comp[1] + a.comp[0] * b.comp[0]) + a.comp[2] * b.comp[2];
}

double magnitude(const DimValue& v) {
  const auto [x, y, z] = v.comp;
  return std::sqrt(y * y + x * x + z * z);
}

Exponents sum_of_exponents(const DimValue& a, const DimValue& b) {
  Exponents sum;
  for (std::size_t i = 0; i < kSlotCount; ++i) sum[i] = a.exps[i] + b.exps[i];
  return sum;
}

// false: one of them is no vector, and the call is refused.
bool pop_vectors(const FunctionRow& row, const FunctionCall& call, DimValue& a, DimValue& b) {
  b = call.stack.pop_value();
  a = call.stack.pop_value();
  if (a.vector && b.vector) return true;
  refuse_computing(row, call, "() with scalars.\n");
  return false;
}

bool pop_vector(const FunctionRow& row, const FunctionCall& call, DimValue& v) {
  v = call.stack.pop_value();
  if (v.vector) return true;
  refuse_computing(row, call, "() with scalars.\n");
  return false;
}

bool pop_scalar(const FunctionRow& row, const FunctionCall& call, DimValue& x) {
  x = call.stack.pop_value();
  if (!x.vector) return true;
  refuse_computing(row, call, "() of a vector.\n");
  return false;
}

}  // namespace

void call_dot(const FunctionRow& row, const FunctionCall& call) {
  DimValue a;
  DimValue b;
  if (!pop_vectors(row, call, a, b)) return;
  call.stack.push_value({false, {dot_product(a, b)}, sum_of_exponents(a, b)});
}

void call_cross(const FunctionRow& row, const FunctionCall& call) {
  DimValue a;
  DimValue b;
  if (!pop_vectors(row, call, a, b)) return;
  call.stack.push_value({true,
                         {b.comp[2] * a.comp[1] - b.comp[1] * a.comp[2],
                          b.comp[0] * a.comp[2] - a.comp[0] * b.comp[2],
                          a.comp[0] * b.comp[1] - b.comp[0] * a.comp[1]},
                         sum_of_exponents(a, b)});
}

void call_mag(const FunctionRow& row, const FunctionCall& call) {
  DimValue v;
  if (!pop_vector(row, call, v)) return;
  call.stack.push_value({false, {magnitude(v)}, v.exps});
}

void call_angle(const FunctionRow& row, const FunctionCall& call) {
  DimValue a;
  DimValue b;
  if (!pop_vectors(row, call, a, b)) return;
  if (!dim_reconcile_for_add(a, b)) {
    return refuse_computing(row, call, "() with args of diff dimensions.\n");
  }
  const double m = magnitude(a) * magnitude(b);
  if (!(m > 0.0)) return call.stack.push_value(DimValue{});
  push_scalar(call, std::atan(dot_product(a, b) / m), 1.0);
}

void call_polar_vec(const FunctionRow& row, const FunctionCall& call) {
  const DimValue theta = call.stack.pop_value();
  const DimValue r = call.stack.pop_value();
  if (r.vector || theta.vector) return refuse_computing(row, call, "() with vector.\n");
  if (!dim_is_pure_radian(theta)) {
    return refuse(call, "ERROR:  PolarVec() second arg must be an angle.\n");
  }
  call.stack.push_value(
      {true,
       {std::cos(theta.comp[0]) * r.comp[0], std::sin(theta.comp[0]) * r.comp[0], 0.0},
       r.exps});
}

void call_polar_angle(const FunctionRow& row, const FunctionCall& call) {
  DimValue v;
  if (!pop_vector(row, call, v)) return;
  push_scalar(call, std::atan2(v.comp[1], v.comp[0]), 1.0);
}

void call_component(const FunctionRow& row, const FunctionCall& call) {
  const DimValue index = call.stack.pop_value();
  const DimValue v = call.stack.pop_value();
  if (!v.vector) return refuse_computing(row, call, "() with a scalar.\n");
  if (index.vector) return refuse_computing(row, call, "() index cant be a vector.\n");
  if (!dim_is_dimensionless(index)) {
    return refuse_computing(row, call, "() second arg has units.\n");
  }
  const int i = truncate_to_int32(index.comp[0]);
  if (i < 1 || i > 3) return refuse(call, "ERROR:  Bad index in component().\n");
  call.stack.push_value({false, {v.comp[static_cast<std::size_t>(i - 1)]}, v.exps});
}

void call_lininterp(const FunctionRow&, const FunctionCall& call) {
  std::array<DimValue, 5> arguments;
  for (std::size_t i = arguments.size(); i > 0; --i) arguments[i - 1] = call.stack.pop_value();
  auto& [x1, y1, x2, y2, x] = arguments;
  if (x1.vector || y1.vector || x2.vector || y2.vector || x.vector) {
    return refuse(call, "ERROR:  Computing LinInterp() with a vector argument.\n");
  }
  if (!dim_reconcile_for_add(x, x1) || !dim_reconcile_for_add(x1, x2)) {
    return refuse(call, "ERROR:  Computing LinInterp() with X args of diff dimensions.\n");
  }
  if (!dim_reconcile_for_add(y1, y2)) {
    return refuse(call, "ERROR:  Computing LinInterp() with Y args of diff dimensions.\n");
  }
  const double run = x2.comp[0] - x1.comp[0];
  if (std::fabs(run) < 1e-10) {  // in MKS, whatever the dimension
    return refuse(call, "ERROR:  LinInterp() X1 and x2 must have diff values.\n");
  }
  DimValue y = y1;
  y.comp[0] = (y2.comp[0] - y1.comp[0]) * (x.comp[0] - x1.comp[0]) / run + y1.comp[0];
  call.stack.push_value(y);
}

void call_mod(const FunctionRow& row, const FunctionCall& call) {
  DimValue b = call.stack.pop_value();
  DimValue a = call.stack.pop_value();
  if (a.vector || b.vector) return refuse_computing(row, call, "() of a vector.\n");
  if (!dim_reconcile_for_add(a, b)) {
    return refuse_computing(row, call, "() with args of diff dimensions.\n");
  }
  if (!is_overflow_mark(a.comp[0])) a.comp[0] = std::fmod(a.comp[0], b.comp[0]);
  call.stack.push_value(a);
}

void call_abs(const FunctionRow& row, const FunctionCall& call) {
  DimValue x;
  if (!pop_scalar(row, call, x)) return;
  x.comp[0] = std::fabs(x.comp[0]);
  call.stack.push_value(x);
}

void call_sign(const FunctionRow& row, const FunctionCall& call) {
  DimValue x;
  if (!pop_scalar(row, call, x)) return;
  double sign = 0.0;
  if (x.comp[0] < 0.0) sign = -1.0;
  if (x.comp[0] > 0.0 && !is_overflow_mark(x.comp[0])) sign = 1.0;
  push_scalar(call, sign, 0.0);
}

void call_number(const FunctionRow&, const FunctionCall& call) {
  DimValue x = call.stack.pop_value();
  x.exps = {};
  call.stack.push_value(x);
}

}  // namespace quantiverse
