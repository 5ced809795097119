// Texts that no one types: deep nesting, long lines, many errors. They give their right output, and
// each of them takes time and memory in proportion to its length; what doesn't shows as a test that
// never ends.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "quantiverse/quantiverse.h"

namespace quantiverse::test {
namespace {

constexpr int kDeep = 100000;

std::string repeat(std::string_view piece, int count) {
  std::string text;
  text.reserve(piece.size() * static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) text += piece;
  return text;
}

// A text is too long to be printed whole.
void expect_same(const std::string& got, const std::string& expected, std::string_view what) {
  if (got == expected) return;
  std::size_t i = 0;
  while (i < got.size() && i < expected.size() && got[i] == expected[i]) ++i;
  ADD_FAILURE() << what << ": from byte " << i << "\n  got      '" << got.substr(i, 200)
                << "'\n  expected '" << expected.substr(i, 200) << "'";
}

void expect_report(const std::string& line, const std::string& report) {
  expect_same(interpret_dimensional_input_lines(line),
              "[  1 ] " + line + "\n       " + report + "\n\n", line.substr(0, 20));
}

TEST(Extreme, Parentheses) {
  expect_report(repeat("(", kDeep) + "7" + repeat(")", kDeep), " = 7 ");
  expect_report(repeat("-(", kDeep) + "7" + repeat(")", kDeep), " = 7 ");
  expect_report(repeat("(", kDeep), "ERROR: Missing closing parenthesis.");
  expect_report(repeat("(*", kDeep / 2), "ERROR: Missing closing parenthesis.");
  expect_report(repeat("(/", kDeep / 2), "ERROR: Math expression incomplete.");
  expect_report(repeat(")", kDeep), "ERROR: Syntax error -- Unexpected input continuation '" +
                                        repeat(")", kDeep) + "'.");
}

TEST(Extreme, Brackets) {
  expect_report(repeat("[", kDeep), "ERROR: Could not process line.");
  expect_report(repeat("[", kDeep) + "7" + repeat("]", kDeep),
                "ERROR:  All vector components must be scalars.");
  expect_report(repeat("[0,", kDeep) + "7" + repeat("]", kDeep),
                "ERROR:  All vector components must be scalars.");
}

TEST(Extreme, Calls) {
  expect_report(repeat("sin(", kDeep) + "0" + repeat(")", kDeep), " = 0 ");
  expect_report(repeat("sin(", kDeep),
                "ERROR: Argument list for function 'sin' not correctly finished.");
  // "sec" is a unit too, so the unit reader follows the text to its end.
  expect_report(repeat("sec(*", 20000),
                "ERROR: Syntax error or undefined variable near or in '(*'.");
  expect_report("5 m; " + repeat("sec(", kDeep), "ERROR:  Bad parenthesis.\n = 5 m");
}

TEST(Extreme, Operators) {
  expect_report(repeat("-", kDeep) + "7", " = -7 ");
  expect_report(repeat("-", kDeep + 1) + "7", " = 7 ");
  expect_report(repeat("+", kDeep) + "7", " = 7 ");
  expect_report(repeat("*", kDeep) + "m s^x", "ERROR: 'm' undefined.");
  expect_report(repeat("* ", kDeep) + "m", " = 0 m");
  expect_report("1" + repeat("^1", kDeep), " = 1 ");
  expect_report("1" + repeat("*2/2", kDeep), " = 1 ");
}

TEST(Extreme, Units) {
  expect_report("5 " + repeat("(", kDeep) + "m" + repeat(")", kDeep), " = 5 m");
  expect_report("5 " + repeat("(", kDeep) + "m", "ERROR: Unit assignment error -- value before '" +
                                                     repeat("(", kDeep) +
                                                     "m' must be dimensionless.");
  expect_report("5 " + repeat("(m", kDeep), "ERROR: Unit assignment error -- value before '" +
                                                repeat("(m", kDeep) + "' must be dimensionless.");
  expect_report("5 " + repeat("(m/", kDeep) + "m" + repeat(")", kDeep), " = 5 m");
  expect_report("5 " + repeat("m(", kDeep) + "m" + repeat(")", kDeep),
                " = 5 m^" + std::to_string(kDeep + 1));
  expect_report("5 m" + repeat("*", kDeep), " = 5 m");
  expect_report("5 m^" + repeat("*", kDeep) + "3", " = 5 m^3");
  expect_report("5 m^(" + repeat("1*", kDeep) + "2)", " = 5 m^2");
  expect_report("5 m^" + repeat("(", kDeep) + "2" + repeat(")", kDeep), " = 5 m^2");
  expect_report("5 m^" + repeat("(", kDeep), "ERROR: Bad exponent for unit 'm'.");
  expect_report("5 m^" + repeat("/", kDeep) + "2", " = 5 m^2");
  expect_report("5 m" + repeat(" m/m", kDeep), " = 5 / m^" + std::to_string(2 * kDeep - 3));
  expect_report("5 m" + repeat("*m^2*m^-2", kDeep), " = 5 m");
  expect_report("5 m" + repeat("; MKS", kDeep), repeat(" = 5 m", kDeep));
  expect_report(
      "5 m" + repeat(";", kDeep),
      repeat("ERROR IN REQUESTED OUTPUT: '' is incompatible.\n       ", kDeep - 1) + " = 5 m");
}

TEST(Extreme, ManyLines) {
  const std::string error = "[  1 ] 1 +\n       ERROR: Math expression incomplete.\n\n";
  expect_same(interpret_dimensional_input_lines(repeat("1 +\n", kDeep) + "7"),
              repeat(error, kDeep) + "[  1 ] 7\n        = 7 \n\n", "errors");
  const std::string nesting =
      "       ERROR: Cannot parse line -- check nesting of parentheses, brackets, and commas.\n\n";
  expect_same(interpret_dimensional_input_lines("sin(]\n" + repeat("7\n", kDeep)),
              "[  1 ] sin(]\n" + nesting + repeat("[  1 ] 7\n" + nesting, kDeep), "nesting");
  expect_same(interpret_dimensional_input_lines(repeat("#\n", kDeep)),
              "\n" + repeat("#\n", kDeep - 1) + "#\n\n", "comments");
  expect_same(interpret_dimensional_input_lines(repeat("\\\n \n", kDeep)), "", "continuations");
  expect_report(repeat("\\\n", kDeep) + "7", " = 7 ");
}

TEST(Extreme, BodiesAndUnits) {
  const auto last = [](const std::string& text) {
    const std::string output = interpret_dimensional_input_lines(text);
    return output.substr(output.rfind("[  "));
  };
  const std::string increments = repeat("y = y + x\n", kDeep);
  EXPECT_EQ(last("x = 1\ny = 0\nbegin\ny = 0\n" + increments +
                 "end\nfmax(y, x)\nsolve(y, x)\nfunc(x, 2)\ny"),
            "[  " + std::to_string(kDeep + 7) + " ] y\n        = 200000 \n\n");
  // A body that is never closed, and one that is begun all the time.
  EXPECT_EQ(last("x = 1\ny = 0\nbegin\n" + increments + "func(x, 1)"),
            "[  " + std::to_string(kDeep + 3) +
                " ] func(x, 1)\n       "
                "ERROR:  Function not defined.\n\n");
  EXPECT_EQ(last(repeat("begin\n", kDeep) + "PrintFunc\nend\n" + repeat("PrintFunc\n", kDeep)),
            "[  PrintFunc2 ] end\n       \n\n\n");
  // A request for each line, and one that fails each time.
  const std::string start = "x = 5\nbegin\ny = x^2\nend\n";
  EXPECT_EQ(last(start + repeat("func(x, 3)\n", kDeep) + "y"),
            "[  " + std::to_string(kDeep + 4) + " ] y\n        = 9 \n\n");
  EXPECT_EQ(last(start + repeat("fmin(x, x)\n", 1000) + "x = 6"),
            "[  5 ] x = 6\n       x = 6 \n\n");
  EXPECT_EQ(last(start + "func(" + repeat("x, 3,", kDeep) + "x, 4)\nx"),
            "[  5 ] x\n        = 3 \n\n");

  std::string definitions;
  for (int i = 0; i < kDeep; ++i) {
    const std::string unit = "u" + std::to_string(i);
    definitions += "DefUnit(" + unit + ", 2 m)\n3 " + unit + "; ft\n";
  }
  EXPECT_EQ(last(definitions + "MKS(u1)\nDefUnit(u7, 5 m)\n10 u7"),
            "[  " + std::to_string(2 * kDeep + 3) + " ] 10 u7\n        = 25 u1\n\n");
}

TEST(Extreme, LongLines) {
  constexpr int kLong = 10'000'000;
  const std::string name = repeat("a", kLong);
  expect_report(name, "ERROR: '" + name + "' undefined.");
  expect_report(
      "2 " + repeat("9", kLong),
      "ERROR: Syntax error or undefined variable near or in '" + repeat("9", kLong) + "'.");
  expect_report(repeat("0", kLong) + "1", " = 1 ");
  expect_report("1" + repeat(" + 1", kLong / 4), " = 2.5e+06 ");
  expect_report("7 #" + repeat("a", kLong), " = 7 ");
  expect_report("7" + repeat(" ", kLong) + "ft; in", " = 84 in");
}

}  // namespace
}  // namespace quantiverse::test
