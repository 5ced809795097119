#pragma once

#include "text/text_buf.h"

// Exponential integrals, Dawson's integral and the normal distribution, on plain doubles.
namespace quantiverse {

double math_func_ei(double x, TextBuf& err);
double math_func_expint(int n, double x, TextBuf& err);
double math_func_dawson(double x);
double math_func_CumNormal(double x);
double math_func_CumNormalInv(double p, TextBuf& err);

}  // namespace quantiverse
