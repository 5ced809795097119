#pragma once

#include <cstddef>
#include <span>
#include <string>

// The texts that the benchmarks run: the same bytes in every run and on every machine.
namespace quantiverse::bench {

// A conversion that this language, GNU Units and UDUNITS write alike and agree on.
struct Conversion {
  const char* from;
  const char* to;
};
std::span<const Conversion> conversions();

// The conversion of line `i`, and the number in it. They go round the table, so every hundred
// lines or so cost the same.
const Conversion& conversion_of(std::size_t i);
std::string number_of(std::size_t i);

// `12.5 ft; m` on every line, with other numbers.
std::string feet_lines(std::size_t lines);
// All conversions in turn.
std::string conversion_lines(std::size_t lines);
// Sums, products, powers and parentheses of plain numbers.
std::string arithmetic_lines(std::size_t lines);
// Line i makes a variable xi out of one of the ten before it.
std::string recent_variables(std::size_t lines);
// The same out of any one before it, at random.
std::string scattered_variables(std::size_t lines);
// One line, a sum.
std::string long_sum(std::size_t terms);

}  // namespace quantiverse::bench
