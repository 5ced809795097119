#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

// What the programs that compare one time with another have in common. A ratio is only as good
// as the pair that it is made of, so the parts of a ratio are measured in turn, again and again,
// and what is reported is the median of the ratios.
namespace quantiverse::bench {

// Processor time of this process so far, user and system together. Unlike the clock on the wall it
// doesn't count what other processes do meanwhile.
double processor_seconds();
// The clock on the wall.
double wall_seconds();

// The processor time of one call, over as many calls as take `at_least` seconds.
double seconds_per_call(const std::function<void()>& work, double at_least);

double median(std::vector<double> samples);

// A table of targets in Markdown on standard output: its rows, and whether all were met.
class TargetTable {
 public:
  // Prints the head.
  explicit TargetTable(const char* subject);
  void at_most(const std::string& what, double measured, double limit);
  void at_least(const std::string& what, double measured, double limit);
  [[nodiscard]] int exit_status() const { return missed_ ? 1 : 0; }

 private:
  void row(const std::string& what, double measured, const char* relation, double limit, bool met);
  bool missed_ = false;
};

}  // namespace quantiverse::bench
