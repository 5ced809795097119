#pragma once

#include "builtins/function_table.h"

// What handlers share: taking arguments and refusing them.
namespace quantiverse {

// Puts a message in `err` and a clear value on the stack.
inline void refuse(const FunctionCall& call, std::string_view message) {
  call.err.append_text(message);
  call.stack.push_value(DimValue{});
}

// "ERROR:  Computing sin() of a vector.\n" and its like.
inline void refuse_computing(const FunctionRow& row, const FunctionCall& call,
                             std::string_view trouble) {
  call.err.append_three("ERROR:  Computing ", row.name, trouble);
  call.stack.push_value(DimValue{});
}

// Pops one argument that has to be a scalar without a dimension; angles and amounts pass.
// false: refused, the handler has nothing left to do.
inline bool pop_plain_scalar(const FunctionRow& row, const FunctionCall& call, DimValue& x) {
  x = call.stack.pop_value();
  if (x.vector) {
    refuse_computing(row, call, "() of a vector.\n");
    return false;
  }
  if (!dim_is_dimensionless(x)) {
    refuse_computing(row, call, "() of a dimensional number.\n");
    return false;
  }
  return true;
}

inline void push_scalar(const FunctionCall& call, double x, double angle_exponent) {
  DimValue result;
  result.comp[0] = x;
  result.exps[kSlotAngle] = angle_exponent;
  call.stack.push_value(result);
}

}  // namespace quantiverse
