#include <gtest/gtest.h>

#include <string>

#include "line_cases.h"
#include "quantiverse/quantiverse.h"

namespace quantiverse::test {
namespace {

std::string with_report(const LineCase& c) {
  return "[  " + std::to_string(kSetupLines + 1) + " ] " + c.line + "\n       " + c.report + "\n\n";
}

TEST(Line, ReportsWhatTheTableSays) {
  const std::string before = interpret_dimensional_input_lines(kSetup);
  for (const LineCase& c : line_cases()) {
    EXPECT_EQ(interpret_dimensional_input_lines(std::string(kSetup) + c.line),
              before + with_report(c));
  }
}

// Behind a line that failed or not, the next one is read as if nothing had been.
TEST(Line, LosesNoOtherLine) {
  for (const LineCase& c : line_cases()) {
    const std::string output =
        interpret_dimensional_input_lines(std::string(kSetup) + c.line + "\ncgs # next\n");
    const std::size_t next = output.find(" ] cgs # next\n       " +
                                         std::string(" Default units = cgs with 0 exceptions.\n"));
    EXPECT_NE(next, std::string::npos) << output;
    EXPECT_TRUE(output.find(with_report(c)) < next) << output;
  }
}

}  // namespace
}  // namespace quantiverse::test
