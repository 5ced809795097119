#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "quantiverse/c.h"
#include "quantiverse/quantiverse.h"

namespace quantiverse {
namespace {

// Variables, a unit system and an error: all that a call could leave behind.
constexpr std::string_view kText = "x = 3 ft\nFPS\ny = x^2\ny\n1 m + 1 s\nz\n";

std::string through_c(std::string_view text) {
  char* output = quantiverse_interpret(text.data(), text.size());
  std::string copy = output;
  quantiverse_free(output);
  return copy;
}

TEST(Door, AllWaysInGiveTheSameBytesAgainAndAgain) {
  const std::string expected = interpret_dimensional_input_lines(kText);
  EXPECT_NE(expected.find("9 ft^2"), std::string::npos) << expected;
  Calculator first;
  Calculator calculator;
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(interpret_dimensional_input_lines(kText), expected);
    EXPECT_EQ(through_c(kText), expected);
    EXPECT_EQ(calculator.interpret(kText), expected);
    EXPECT_EQ(calculator.interpret_in_place(kText), expected);
    std::swap(first, calculator);
  }
}

TEST(Door, ACallSeesNoVariablesOfTheOneBefore) {
  interpret_dimensional_input_lines("x = 3\n");
  EXPECT_NE(interpret_dimensional_input_lines("x\n").find("'x' undefined"), std::string::npos);
}

TEST(Door, OnlyARequestThatIsStillOpenIsSeenByTheNextCall) {
  constexpr std::string_view kOpen = "x = 1\nbegin\ny = x^2 + 1\nend\nsolve(y, x)\n1 m + q\nend\n";
  constexpr std::string_view kNext = "begin\nz + 1\nend\nx = 3 ft\n5 ft\nfunc()\n";
  // What is open is the kind of the request, not its body or what it held.
  const std::string expected =
      "[  1 ] begin\n       \n[  1 ] z + 1\n       ERROR: 'z' undefined.\n\n[  1 ] end\n       \n\n"
      "[  2 ] x = 3 ft\n\nSolve:\n\n[  Sol1 ] z + 1\n       ERROR: 'z' undefined.\n\n"
      "[  Sol1 ] end\n       \n\n       x\n[  3 ] 5 ft\n        = 1.524 m\n\n"
      "[  4 ] func()\n\nFunc:\n\n[  Func1 ] z + 1\n       ERROR: 'z' undefined.\n\n"
      "[  Func1 ] end\n       \n\n       \n";
  Calculator calculator;
  const std::string first = calculator.interpret(kOpen);
  EXPECT_EQ(calculator.interpret(kNext), expected);
  EXPECT_EQ(calculator.interpret(kOpen), first);
  EXPECT_EQ(calculator.interpret("q\n# nothing here\n"),
            Calculator().interpret("q\n# nothing here\n"));
  EXPECT_EQ(calculator.interpret("x = 5 ft; in\n5 ft"),
            "[  1 ] x = 5 ft; in\n       x\n[  2 ] 5 ft\n        = 1.524 m\n\n");
  calculator.interpret(kOpen);
  calculator.reset();
  EXPECT_EQ(calculator.interpret("5 ft"), "[  1 ] 5 ft\n        = 1.524 m\n\n");
}

TEST(Door, ANulEndsTheText) {
  using namespace std::string_view_literals;
  EXPECT_EQ(interpret_dimensional_input_lines("1+1\0\n2+2\n"sv),
            interpret_dimensional_input_lines("1+1"));
}

}  // namespace
}  // namespace quantiverse
