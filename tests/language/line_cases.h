#pragma once

#include <string>
#include <vector>

namespace quantiverse::test {

// What stands in front of every case.
inline constexpr const char* kSetup = "y = 5 m\nn = 2\nv = [1,2,3] m\nw = [4,5,6]\n";

// A text, mostly of one line, and what the report of its last line says behind the seven blanks,
// up to the newlines that end it.
struct LineCase {
  std::string text;
  std::string report;
};

// All of golden/one_line/*.txt. There "> " begins a line of a text and "< " a line of its report;
// "\t", "\r", "\xff" and "\\" are characters that would not be seen, and "\s" a blank at the end.
const std::vector<LineCase>& line_cases();

}  // namespace quantiverse::test
