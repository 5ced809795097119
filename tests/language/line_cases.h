#pragma once

#include <span>

namespace quantiverse::test {

// What stands in front of every line of the table.
inline constexpr const char* kSetup = "y = 5 m\nn = 2\nv = [1,2,3] m\nw = [4,5,6]\n";
inline constexpr int kSetupLines = 4;

// A line, and what its report says behind the seven blanks, up to the newlines that end it.
struct LineCase {
  const char* line;
  const char* report;
};

std::span<const LineCase> line_cases();

}  // namespace quantiverse::test
