#include "builtins/elementary.h"

#include <cmath>
#include <limits>

#include "builtins/arguments.h"
#include "text/numbers.h"

namespace quantiverse {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

double reciprocal(double x) { return x == 0.0 ? kInfinity : 1.0 / x; }

double fail(TextBuf& err, std::string_view message) {
  err.append_text(message);
  return 0.0;
}

}  // namespace

double elementary_sin(const double* x, TextBuf&) { return std::sin(*x); }
double elementary_cos(const double* x, TextBuf&) { return std::cos(*x); }
double elementary_tan(const double* x, TextBuf&) { return std::tan(*x); }
double elementary_sec(const double* x, TextBuf&) { return reciprocal(std::cos(*x)); }
double elementary_csc(const double* x, TextBuf&) { return reciprocal(std::sin(*x)); }
double elementary_cot(const double* x, TextBuf&) { return reciprocal(std::tan(*x)); }
double elementary_sinh(const double* x, TextBuf&) { return std::sinh(*x); }
double elementary_cosh(const double* x, TextBuf&) { return std::cosh(*x); }
double elementary_tanh(const double* x, TextBuf&) { return std::tanh(*x); }
double elementary_sech(const double* x, TextBuf&) { return reciprocal(std::cosh(*x)); }
double elementary_csch(const double* x, TextBuf&) { return reciprocal(std::sinh(*x)); }
double elementary_coth(const double* x, TextBuf&) { return reciprocal(std::tanh(*x)); }
double elementary_exp(const double* x, TextBuf&) { return std::exp(*x); }
double elementary_ln(const double* x, TextBuf&) { return *x <= 0.0 ? kInfinity : std::log(*x); }
double elementary_log10(const double* x, TextBuf&) {
  return *x <= 0.0 ? kInfinity : std::log10(*x);
}

double elementary_asin(const double* x, TextBuf&) {
  return *x >= -1.0 && *x <= 1.0 ? std::asin(*x) : kInfinity;
}

double elementary_acos(const double* x, TextBuf&) {
  return *x >= -1.0 && *x <= 1.0 ? std::acos(*x) : kInfinity;
}

double elementary_atan(const double* x, TextBuf&) { return std::atan(*x); }

double elementary_acot(const double* x, TextBuf&) {
  return (*x < 0 ? std::atan(1.0) * -2.0 : std::atan(1.0) * 2.0) - std::atan(*x);
}

double elementary_asec(const double* arguments, TextBuf&) {
  const double x = *arguments;
  if (x <= -1.0) return std::atan(1.0) * 4.0 - std::atan(std::sqrt(x * x - 1.0));
  if (x >= 1.0) return std::atan(std::sqrt(x * x - 1.0));
  return kInfinity;
}

// For a negative argument the arc cosine is that of a negative number.
double elementary_acsc(const double* arguments, TextBuf&) {
  const double x = *arguments;
  if (x <= -1.0) return -std::acos(std::sqrt(x * x - 1.0) / x);
  if (x >= 1.0) return std::acos(std::sqrt(x * x - 1.0) / x);
  return kInfinity;
}

double elementary_asinh(const double* arguments, TextBuf&) {
  const double x = *arguments;
  return std::log(std::sqrt(x * x + 1.0) + x);
}

double elementary_acsch(const double* x, TextBuf&) {
  const double y = 1.0 / *x;
  return std::log(std::sqrt(y * y + 1.0) + y);
}

double elementary_acoth(const double* arguments, TextBuf& err) {
  const double x = *arguments;
  if (std::fabs(x) < 1.0) return fail(err, "ERROR:  Arg of acoth() must be greater than one.\n");
  return std::log((x + 1.0) / (x - 1.0)) * 0.5;
}

double elementary_acosh(const double* arguments, TextBuf& err) {
  const double x = *arguments;
  if (x < 1.0) return fail(err, "ERROR:  Arg to acosh() must be greater than one.\n");
  return is_overflow_mark(x) ? 0.0 : std::log(std::sqrt(x * x - 1.0) + x);
}

// Only the upper side is checked; below -1 it is the logarithm of what the formula gives.
double elementary_atanh(const double* arguments, TextBuf& err) {
  const double x = *arguments;
  if (x > 1.0) return fail(err, "ERROR:  Arg of atanh() must be less than one.\n");
  return std::log((x + 1.0) / (1.0 - x)) * 0.5;
}

double elementary_asech(const double* arguments, TextBuf& err) {
  const double x = *arguments;
  if (x < 0.0 || x > 1.0) {
    return fail(err, "ERROR:  ARg to asech() must be between zero and one.\n");
  }
  const double y = 1.0 / x;
  return std::log(std::sqrt(y * y - 1.0) + y);
}

double elementary_floor(const double* x, TextBuf&) { return std::floor(*x); }
double elementary_ceil(const double* x, TextBuf&) { return std::ceil(*x); }
double elementary_int(const double* x, TextBuf&) {
  return *x >= 0.0 ? std::floor(*x) : -std::floor(-*x);
}
double elementary_round(const double* x, TextBuf&) {
  return truncate_to_int32(*x >= 0.0 ? *x + 0.5 : *x - 0.5);
}

void call_atan2(const FunctionRow& row, const FunctionCall& call) {
  DimValue x = call.stack.pop_value();
  DimValue y = call.stack.pop_value();
  if (x.vector || y.vector) return refuse_computing(row, call, "() of a vector.\n");
  if (!dim_reconcile_for_add(x, y)) {
    return refuse_computing(row, call, "() of a dimensional number.\n");
  }
  push_scalar(call, std::atan2(y.comp[0], x.comp[0]), 1.0);
}

void call_sqrt(const FunctionRow& row, const FunctionCall& call) {
  const DimValue x = call.stack.pop_value();
  if (x.vector) return refuse_computing(row, call, "() of a vector.\n");
  if (is_overflow_mark(x.comp[0])) return call.stack.push_value(DimValue{});
  if (!(x.comp[0] >= 0.0)) {
    call.err.append_text("ERROR:  sqrt() of a negative value.\n");
    return call.stack.push_value(overflow_value());
  }
  call.stack.push_value(dim_power(x, 0.5));
}

}  // namespace quantiverse
