#pragma once

#include <array>
#include <string>
#include <vector>

#include "builtins/function_table.h"

// How far the functions from plain numbers to a number stray from Boost.Math, or from a longer
// arithmetic, range by range.
namespace quantiverse::accuracy {

enum class Error { kAbsolute, kRelative };
using Arguments = std::array<double, 4>;

struct Range {
  const char* function;  // as the function table has it
  const char* text;      // the range in words
  Error error;
  std::vector<std::vector<double>> axes;  // the values of each argument; all pairings are tried
  long double (*exact)(const double* x);
  bool (*only)(const double* x) = nullptr;  // which pairings belong to the range; null: all
};

// The elementary functions first, then the special ones.
std::vector<Range> ranges();

struct Measured {
  double largest = 0.0;  // NaN if a result was
  Arguments where{};
  int points = 0;
  std::string err;  // whatever the routine said; a range has to lie in the domain
};
Measured measure(const Range& range);

// The table in Markdown, a row for each range. Any trouble stands behind it in `complaints`.
std::string accuracy_table(std::string& complaints);

}  // namespace quantiverse::accuracy
