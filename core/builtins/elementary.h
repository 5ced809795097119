#pragma once

#include "builtins/function_table.h"

// The routines of the elementary functions, as they are computed: the formula is part of the
// result. Outside of its domain most of them give +infinity, without a message.
namespace quantiverse {

double elementary_sin(const double* x, TextBuf& err);
double elementary_cos(const double* x, TextBuf& err);
double elementary_tan(const double* x, TextBuf& err);
double elementary_sec(const double* x, TextBuf& err);
double elementary_csc(const double* x, TextBuf& err);
double elementary_cot(const double* x, TextBuf& err);
double elementary_sinh(const double* x, TextBuf& err);
double elementary_cosh(const double* x, TextBuf& err);
double elementary_tanh(const double* x, TextBuf& err);
double elementary_sech(const double* x, TextBuf& err);
double elementary_csch(const double* x, TextBuf& err);
double elementary_coth(const double* x, TextBuf& err);
double elementary_exp(const double* x, TextBuf& err);
double elementary_ln(const double* x, TextBuf& err);
double elementary_log10(const double* x, TextBuf& err);

// In radians.
double elementary_asin(const double* x, TextBuf& err);
double elementary_acos(const double* x, TextBuf& err);
double elementary_atan(const double* x, TextBuf& err);
double elementary_acot(const double* x, TextBuf& err);
double elementary_asec(const double* arguments, TextBuf& err);
// Between -pi and -pi/2 for a negative argument.
double elementary_acsc(const double* arguments, TextBuf& err);

double elementary_asinh(const double* arguments, TextBuf& err);
double elementary_acsch(const double* x, TextBuf& err);
double elementary_acoth(const double* arguments, TextBuf& err);  // err: |x| < 1
// These three look at their domain before they look for +infinity.
double elementary_acosh(const double* arguments, TextBuf& err);  // err: x < 1
double elementary_atanh(const double* arguments, TextBuf& err);  // err: x > 1, but not x < -1
double elementary_asech(const double* arguments, TextBuf& err);  // err: x < 0 or x > 1

double elementary_floor(const double* x, TextBuf& err);
double elementary_ceil(const double* x, TextBuf& err);
// Towards zero.
double elementary_int(const double* x, TextBuf& err);
// Within the range of a 32-bit integer; outside of it the result is -2147483648.
double elementary_round(const double* x, TextBuf& err);

// Two values of one dimension, y first; the result is an angle.
void call_atan2(const FunctionRow& row, const FunctionCall& call);
// Any dimension, which is halved: sqrt(4 m^2) is 2 m.
void call_sqrt(const FunctionRow& row, const FunctionCall& call);

}  // namespace quantiverse
