#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "line_cases.h"
#include "quantiverse/quantiverse.h"

namespace quantiverse::test {
namespace {

// What is said of the last line of the case's text, behind all that is said before.
std::string with_report(const LineCase& c) {
  const std::string text = kSetup + c.text;
  return "[  " + std::to_string(1 + std::count(text.begin(), text.end(), '\n')) + " ] " +
         text.substr(text.rfind('\n') + 1) + "\n       " + c.report + "\n\n";
}

TEST(Line, ReportsWhatTheFilesSay) {
  EXPECT_GT(line_cases().size(), 600U);
  for (const LineCase& c : line_cases()) {
    const std::string text = kSetup + c.text;
    const std::string before =
        interpret_dimensional_input_lines(text.substr(0, text.rfind('\n') + 1));
    EXPECT_EQ(interpret_dimensional_input_lines(text), before + with_report(c));
  }
}

// Behind a line that failed or not, the next one is read as if nothing had been.
TEST(Line, LosesNoOtherLine) {
  for (const LineCase& c : line_cases()) {
    const std::string output =
        interpret_dimensional_input_lines(kSetup + c.text + "\ncgs # next\n");
    const std::size_t next = output.find(" ] cgs # next\n       " +
                                         std::string(" Default units = cgs with 0 exceptions.\n"));
    EXPECT_NE(next, std::string::npos) << output;
    EXPECT_TRUE(output.find(with_report(c)) < next) << output;
  }
}

}  // namespace
}  // namespace quantiverse::test
