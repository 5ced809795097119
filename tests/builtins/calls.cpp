#include "calls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "quantiverse/quantiverse.h"

namespace quantiverse::test {

std::string answer(const std::string& text) {
  const std::string echo = "] " + text.substr(text.rfind('\n') + 1) + "\n       ";
  const std::string out = interpret_dimensional_input_lines(text);
  const std::size_t found = out.rfind(echo);
  if (found == std::string::npos || !out.ends_with("\n\n")) return "not answered: " + out;
  const std::size_t first = found + echo.size();
  const std::string answer = out.substr(first, out.size() - 2 - first);
  return answer.substr(0, answer.find_last_not_of(' ') + 1);
}

DimValue scalar(double x, const Exponents& exps) { return {false, {x}, exps}; }

DimValue vec(double x, double y, double z, const Exponents& exps) {
  return {true, {x, y, z}, exps};
}

Exponents slot(Slot which, double exponent) {
  Exponents exps{};
  exps[which] = exponent;
  return exps;
}

bool same_bits(double a, double b) {
  return std::isnan(a) ? std::isnan(b) : a == b && std::signbit(a) == std::signbit(b);
}

bool same_value(const DimValue& a, const DimValue& b) {
  return a.vector == b.vector && a.exps == b.exps &&
         std::equal(a.comp.begin(), a.comp.end(), b.comp.begin(), same_bits);
}

Called call(std::string_view name, const std::vector<DimValue>& arguments) {
  static Interpreter interpreter(builtin_functions());
  ValueStack stack;
  TextBuf err;
  stack.push_value(scalar(4711));  // belongs to someone else
  for (const DimValue& argument : arguments) stack.push_value(argument);
  call_func_by_number({interpreter, lookup_function_name(name).number,
                       static_cast<int>(arguments.size()), stack, err});
  EXPECT_EQ(stack.size(), 2U) << name;
  const DimValue value = stack.pop_value();
  EXPECT_EQ(stack.pop_value().comp[0], 4711) << name;
  return {value, std::string(err.text())};
}

double number(std::string_view name, const std::vector<DimValue>& arguments) {
  const Called called = call(name, arguments);
  EXPECT_EQ(called.err, "") << name;
  return called.value.comp[0];
}

std::vector<std::string> words(std::string_view text) {
  std::istringstream in{std::string(text)};
  std::vector<std::string> result;
  for (std::string word; in >> word;) result.push_back(word);
  return result;
}

}  // namespace quantiverse::test
