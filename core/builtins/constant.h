#pragma once

#include "builtins/function_table.h"

// Handlers of the constants, which are functions without arguments. Their values are fixed, also
// where a standard has moved on since, so that a worksheet keeps its results.
namespace quantiverse {

void call_pi(const FunctionRow&, const FunctionCall&);
void call_euler(const FunctionRow&, const FunctionCall&);  // the Euler-Mascheroni constant
void call_grav(const FunctionRow&, const FunctionCall&);   // acceleration of free fall
void call_gas(const FunctionRow&, const FunctionCall&);    // molar gas constant
void call_boltzmann(const FunctionRow&, const FunctionCall&);
void call_clight(const FunctionRow&, const FunctionCall&);  // speed of light
void call_planck(const FunctionRow&, const FunctionCall&);
void call_gearth(const FunctionRow&, const FunctionCall&);  // constant of gravitation, not of Earth
void call_stefan_boltzmann(const FunctionRow&, const FunctionCall&);

}  // namespace quantiverse
