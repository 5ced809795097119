#include "builtins/plain.h"

#include <array>

#include "builtins/arguments.h"

namespace quantiverse {
namespace {

struct PlainArguments {
  std::array<double, kMostPlainArguments> x{};
  bool overflow = false;  // one of them is the overflow mark
};

bool pop_arguments(const FunctionRow& row, const FunctionCall& call, PlainArguments& arguments) {
  for (int i = row.arguments; i > 0; --i) {
    DimValue value;
    if (!pop_plain_scalar(row, call, value)) {
      call.stack.drop(static_cast<std::size_t>(i));  // the clear value and what lies under it
      call.stack.push_value(DimValue{});
      return false;
    }
    arguments.x[static_cast<std::size_t>(i - 1)] = value.comp[0];
    if (is_overflow_mark(value.comp[0])) arguments.overflow = true;
  }
  return true;
}

void call_guarded(const FunctionRow& row, const FunctionCall& call, double angle_exponent) {
  PlainArguments arguments;
  if (!pop_arguments(row, call, arguments)) return;
  const double y = arguments.overflow ? 0.0 : row.routine(arguments.x.data(), call.err);
  push_scalar(call, y, angle_exponent);
}

}  // namespace

void call_plain(const FunctionRow& row, const FunctionCall& call) { call_guarded(row, call, 0.0); }

void call_angular(const FunctionRow& row, const FunctionCall& call) {
  call_guarded(row, call, 1.0);
}

void call_plain_unguarded(const FunctionRow& row, const FunctionCall& call) {
  PlainArguments arguments;
  if (!pop_arguments(row, call, arguments)) return;
  push_scalar(call, row.routine(arguments.x.data(), call.err), 0.0);
}

void call_rounding(const FunctionRow& row, const FunctionCall& call) {
  DimValue x;
  if (!pop_plain_scalar(row, call, x)) return;
  if (!is_overflow_mark(x.comp[0])) x.comp[0] = row.routine(x.comp.data(), call.err);
  call.stack.push_value(x);
}

}  // namespace quantiverse
