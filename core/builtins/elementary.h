#pragma once

#include "builtins/function_table.h"

// Handlers of the elementary functions of one scalar, of atan2, and of the roundings.
// The functions take a plain number: an angle is one (`sin(30 deg)` works on radians), and so is
// an amount of substance. An argument of +infinity, the mark of a failed result, gives 0.
// Outside of their domain most give +infinity without a message.
namespace quantiverse {

// A plain number to a plain number.
void call_sin(const FunctionRow&, const FunctionCall&);
void call_cos(const FunctionRow&, const FunctionCall&);
void call_tan(const FunctionRow&, const FunctionCall&);
void call_sec(const FunctionRow&, const FunctionCall&);
void call_csc(const FunctionRow&, const FunctionCall&);
void call_cot(const FunctionRow&, const FunctionCall&);
void call_sinh(const FunctionRow&, const FunctionCall&);
void call_cosh(const FunctionRow&, const FunctionCall&);
void call_tanh(const FunctionRow&, const FunctionCall&);
void call_sech(const FunctionRow&, const FunctionCall&);
void call_csch(const FunctionRow&, const FunctionCall&);
void call_coth(const FunctionRow&, const FunctionCall&);
void call_asinh(const FunctionRow&, const FunctionCall&);
void call_acosh(const FunctionRow&, const FunctionCall&);
void call_atanh(const FunctionRow&, const FunctionCall&);
void call_asech(const FunctionRow&, const FunctionCall&);
void call_acsch(const FunctionRow&, const FunctionCall&);
void call_acoth(const FunctionRow&, const FunctionCall&);
void call_exp(const FunctionRow&, const FunctionCall&);
void call_ln(const FunctionRow&, const FunctionCall&);
void call_log10(const FunctionRow&, const FunctionCall&);

// A plain number to an angle in radians.
void call_asin(const FunctionRow&, const FunctionCall&);
void call_acos(const FunctionRow&, const FunctionCall&);
void call_atan(const FunctionRow&, const FunctionCall&);
void call_acot(const FunctionRow&, const FunctionCall&);
void call_asec(const FunctionRow&, const FunctionCall&);
void call_acsc(const FunctionRow&, const FunctionCall&);
// Two values of one dimension, y first.
void call_atan2(const FunctionRow&, const FunctionCall&);

// A plain number to a whole one; an angle stays an angle.
void call_floor(const FunctionRow&, const FunctionCall&);
void call_ceil(const FunctionRow&, const FunctionCall&);
void call_int(const FunctionRow&, const FunctionCall&);
// Within the range of a 32-bit integer; outside of it the result is -2147483648.
void call_round(const FunctionRow&, const FunctionCall&);

// Any dimension, which is halved: sqrt(4 m^2) is 2 m.
void call_sqrt(const FunctionRow&, const FunctionCall&);

}  // namespace quantiverse
