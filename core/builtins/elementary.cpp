#include "builtins/elementary.h"

#include <cmath>
#include <limits>

#include "builtins/arguments.h"
#include "text/numbers.h"

namespace quantiverse {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

double reciprocal(double x) { return x == 0.0 ? kInfinity : 1.0 / x; }

template <typename Routine>
void plain_function(const FunctionRow& row, const FunctionCall& call, Routine routine,
                    double angle_exponent = 0.0) {
  DimValue x;
  if (!pop_plain_scalar(row, call, x)) return;
  const double y = is_overflow_mark(x.comp[0]) ? 0.0 : routine(x.comp[0]);
  push_scalar(call, y, angle_exponent);
}

template <typename Routine>
void angle_function(const FunctionRow& row, const FunctionCall& call, Routine routine) {
  plain_function(row, call, routine, 1.0);
}

// A function that says so when its argument is out of its domain, before infinity is looked at.
template <typename Domain, typename Routine>
void limited_function(const FunctionRow& row, const FunctionCall& call, Domain is_outside,
                      std::string_view message, Routine routine) {
  DimValue x;
  if (!pop_plain_scalar(row, call, x)) return;
  if (is_outside(x.comp[0])) return refuse(call, message);
  push_scalar(call, is_overflow_mark(x.comp[0]) ? 0.0 : routine(x.comp[0]), 0.0);
}

// A rounding keeps the record of its argument, so an angle or amount stays one.
template <typename Routine>
void rounding(const FunctionRow& row, const FunctionCall& call, Routine routine) {
  DimValue x;
  if (!pop_plain_scalar(row, call, x)) return;
  if (!is_overflow_mark(x.comp[0])) x.comp[0] = routine(x.comp[0]);
  call.stack.push_value(x);
}

double asin_or_infinity(double x) { return x >= -1.0 && x <= 1.0 ? std::asin(x) : kInfinity; }

double acos_or_infinity(double x) { return x >= -1.0 && x <= 1.0 ? std::acos(x) : kInfinity; }

double arc_cotangent(double x) {
  return (x < 0 ? std::atan(1.0) * -2.0 : std::atan(1.0) * 2.0) - std::atan(x);
}

double arc_secant(double x) {
  if (x <= -1.0) return std::atan(1.0) * 4.0 - std::atan(std::sqrt(x * x - 1.0));
  if (x >= 1.0) return std::atan(std::sqrt(x * x - 1.0));
  return kInfinity;
}

// For a negative argument the arc cosine is that of a negative number, so the result lies between
// -pi and -pi/2.
double arc_cosecant(double x) {
  if (x <= -1.0) return -std::acos(std::sqrt(x * x - 1.0) / x);
  if (x >= 1.0) return std::acos(std::sqrt(x * x - 1.0) / x);
  return kInfinity;
}

double log_or_infinity(double x) { return x <= 0.0 ? kInfinity : std::log(x); }

double log10_or_infinity(double x) { return x <= 0.0 ? kInfinity : std::log10(x); }

double round_to_int32(double x) { return truncate_to_int32(x >= 0.0 ? x + 0.5 : x - 0.5); }

}  // namespace

void call_sin(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return std::sin(x); });
}
void call_cos(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return std::cos(x); });
}
void call_tan(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return std::tan(x); });
}
void call_sec(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return reciprocal(std::cos(x)); });
}
void call_csc(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return reciprocal(std::sin(x)); });
}
void call_cot(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return reciprocal(std::tan(x)); });
}
void call_sinh(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return std::sinh(x); });
}
void call_cosh(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return std::cosh(x); });
}
void call_tanh(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return std::tanh(x); });
}
void call_sech(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return reciprocal(std::cosh(x)); });
}
void call_csch(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return reciprocal(std::sinh(x)); });
}
void call_coth(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return reciprocal(std::tanh(x)); });
}
void call_asinh(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return std::log(std::sqrt(x * x + 1.0) + x); });
}
void call_acsch(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) {
    const double y = 1.0 / x;
    return std::log(std::sqrt(y * y + 1.0) + y);
  });
}
void call_exp(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, [](double x) { return std::exp(x); });
}
void call_ln(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, log_or_infinity);
}
void call_log10(const FunctionRow& row, const FunctionCall& call) {
  plain_function(row, call, log10_or_infinity);
}

void call_acosh(const FunctionRow& row, const FunctionCall& call) {
  limited_function(
      row, call, [](double x) { return x < 1.0; },
      "ERROR:  Arg to acosh() must be greater than one.\n",
      [](double x) { return std::log(std::sqrt(x * x - 1.0) + x); });
}
// Only the upper side is checked; what lies below -1 is the logarithm of what the formula gives.
void call_atanh(const FunctionRow& row, const FunctionCall& call) {
  limited_function(
      row, call, [](double x) { return x > 1.0; },
      "ERROR:  Arg of atanh() must be less than one.\n",
      [](double x) { return std::log((x + 1.0) / (1.0 - x)) * 0.5; });
}
void call_asech(const FunctionRow& row, const FunctionCall& call) {
  limited_function(
      row, call, [](double x) { return x < 0.0 || x > 1.0; },
      "ERROR:  ARg to asech() must be between zero and one.\n",
      [](double x) {
        const double y = 1.0 / x;
        return std::log(std::sqrt(y * y - 1.0) + y);
      });
}
void call_acoth(const FunctionRow& row, const FunctionCall& call) {
  limited_function(
      row, call, [](double x) { return std::fabs(x) < 1.0; },
      "ERROR:  Arg of acoth() must be greater than one.\n",
      [](double x) { return std::log((x + 1.0) / (x - 1.0)) * 0.5; });
}

void call_asin(const FunctionRow& row, const FunctionCall& call) {
  angle_function(row, call, asin_or_infinity);
}
void call_acos(const FunctionRow& row, const FunctionCall& call) {
  angle_function(row, call, acos_or_infinity);
}
void call_atan(const FunctionRow& row, const FunctionCall& call) {
  angle_function(row, call, [](double x) { return std::atan(x); });
}
void call_acot(const FunctionRow& row, const FunctionCall& call) {
  angle_function(row, call, arc_cotangent);
}
void call_asec(const FunctionRow& row, const FunctionCall& call) {
  angle_function(row, call, arc_secant);
}
void call_acsc(const FunctionRow& row, const FunctionCall& call) {
  angle_function(row, call, arc_cosecant);
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

void call_floor(const FunctionRow& row, const FunctionCall& call) {
  rounding(row, call, [](double x) { return std::floor(x); });
}
void call_ceil(const FunctionRow& row, const FunctionCall& call) {
  rounding(row, call, [](double x) { return std::ceil(x); });
}
void call_int(const FunctionRow& row, const FunctionCall& call) {
  rounding(row, call, [](double x) { return x >= 0.0 ? std::floor(x) : -std::floor(-x); });
}
void call_round(const FunctionRow& row, const FunctionCall& call) {
  rounding(row, call, round_to_int32);
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
