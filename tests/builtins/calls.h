#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "builtins/function_table.h"
#include "language/interpreter.h"

// What the tests of this folder share: one line to its answer, one call to its value.
namespace quantiverse::test {

// The part of the output that answers the last line of `text`: what lies between its echo with
// seven blanks and the two newlines at the end, without blanks at its own end.
std::string answer(const std::string& text);

DimValue scalar(double x, const Exponents& exps = {});
DimValue vec(double x, double y, double z, const Exponents& exps = {});
Exponents slot(Slot which, double exponent = 1.0);

// Equal to the last bit; NaNs are alike.
bool same_bits(double a, double b);
bool same_value(const DimValue& a, const DimValue& b);

// A built-in that is called by its name, also with values that no text can spell.
// Checks that its arguments are taken and exactly one value is given.
struct Called {
  DimValue value;
  std::string err;
};
Called call(std::string_view name, const std::vector<DimValue>& arguments);
// The first component of what a call without an error gives.
double number(std::string_view name, const std::vector<DimValue>& arguments);

std::vector<std::string> words(std::string_view text);

}  // namespace quantiverse::test
