#include "measure.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace quantiverse::bench {
namespace {

double seconds(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

double processor_seconds() { return seconds(CLOCK_PROCESS_CPUTIME_ID); }
double wall_seconds() { return seconds(CLOCK_MONOTONIC); }

double seconds_per_call(const std::function<void()>& work, double at_least) {
  double spent = 0.0;
  std::size_t calls = 0;
  for (std::size_t batch = 1; spent < at_least; batch *= 2) {
    const double start = processor_seconds();
    for (std::size_t i = 0; i < batch; ++i) work();
    spent += processor_seconds() - start;
    calls += batch;
  }
  return spent / static_cast<double>(calls);
}

double median(std::vector<double> samples) {
  const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
  std::nth_element(samples.begin(), middle, samples.end());
  return *middle;
}

TargetTable::TargetTable(const char* subject) {
  std::printf("| %s | ratio | target | |\n|---|---:|---:|---|\n", subject);
}

void TargetTable::at_most(const std::string& what, double measured, double limit) {
  row(what, measured, "<=", limit, measured <= limit);
}

void TargetTable::at_least(const std::string& what, double measured, double limit) {
  row(what, measured, ">=", limit, measured >= limit);
}

void TargetTable::row(const std::string& what, double measured, const char* relation, double limit,
                      bool met) {
  missed_ = missed_ || !met;
  std::printf("| %s | %.2f | %s %.3g | %s |\n", what.c_str(), measured, relation, limit,
              met ? "met" : "**missed**");
  std::fflush(stdout);
}

}  // namespace quantiverse::bench
