#pragma once

#include "text/text_buf.h"

// Gamma, beta and error functions of real arguments, on plain doubles.
namespace quantiverse {

double math_func_gammln(double x, TextBuf& err);
double math_func_gammp(double a, double x, TextBuf& err);
double math_func_gammq(double a, double x, TextBuf& err);
void math_func_gser(double& gamser, double a, double x, double& gln, TextBuf& err);
void math_func_gcf(double& gammcf, double a, double x, double& gln, TextBuf& err);
double math_func_erf(double x, TextBuf& err);
double math_func_erfc(double x, TextBuf& err);
double math_func_beta(double z, double w, TextBuf& err);
double math_func_betai(double a, double b, double x, TextBuf& err);
double math_func_betacf(double a, double b, double x, TextBuf& err);

}  // namespace quantiverse
