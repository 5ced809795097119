#include "builtins/constant.h"

namespace quantiverse {
namespace {

// The value in MKS, and the exponents of time, mass, length, temperature and amount.
void push_constant(const FunctionCall& call, double value, double time = 0.0, double mass = 0.0,
                   double length = 0.0, double temperature = 0.0, double amount = 0.0) {
  call.stack.push_value({false, {value}, {0.0, time, mass, length, temperature, amount}});
}

}  // namespace

void call_pi(const FunctionRow&, const FunctionCall& call) {
  push_constant(call, 3.141592653589793);
}
void call_euler(const FunctionRow&, const FunctionCall& call) {
  push_constant(call, 0.5772156649015329);
}
void call_grav(const FunctionRow&, const FunctionCall& call) {
  push_constant(call, 9.806652, -2, 0, 1);
}
void call_gas(const FunctionRow&, const FunctionCall& call) {
  push_constant(call, 8.31434, -2, 1, 2, -1, -1);
}
void call_boltzmann(const FunctionRow&, const FunctionCall& call) {
  push_constant(call, 1.38065e-23, -2, 1, 2, -1);
}
void call_clight(const FunctionRow&, const FunctionCall& call) {
  push_constant(call, 299792458.0, -1, 0, 1);
}
void call_planck(const FunctionRow&, const FunctionCall& call) {
  push_constant(call, 6.62606896e-34, -1, 1, 2);
}
void call_gearth(const FunctionRow&, const FunctionCall& call) {
  push_constant(call, 6.67428e-11, -2, -1, 3);
}
void call_stefan_boltzmann(const FunctionRow&, const FunctionCall& call) {
  push_constant(call, 5.6704e-08, -3, 1, 0, -4);
}

}  // namespace quantiverse
