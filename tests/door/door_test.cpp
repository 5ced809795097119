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
    std::swap(first, calculator);
  }
}

TEST(Door, ACallSeesNoVariablesOfTheOneBefore) {
  interpret_dimensional_input_lines("x = 3\n");
  EXPECT_NE(interpret_dimensional_input_lines("x\n").find("'x' undefined"), std::string::npos);
}

TEST(Door, ANulEndsTheText) {
  using namespace std::string_view_literals;
  EXPECT_EQ(interpret_dimensional_input_lines("1+1\0\n2+2\n"sv),
            interpret_dimensional_input_lines("1+1"));
}

}  // namespace
}  // namespace quantiverse
