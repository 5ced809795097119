// How time and memory grow with the size of a text. A line is to cost the same wherever it
// stands, so the ratios here are near 1 but for what the machine's caches make of a large text.

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "measure.h"
#include "quantiverse/quantiverse.h"
#include "worksheets.h"

namespace {

using namespace quantiverse::bench;
using Worksheet = std::string (*)(std::size_t lines);

constexpr double kEnoughSeconds = 0.2;
constexpr std::size_t kFewLines = 1'000;

// Keeps a result from being left out by the compiler, and is summed up for the memory cases.
std::size_t output_bytes = 0;

void interpret(const std::string& text) {
  output_bytes = quantiverse::interpret_dimensional_input_lines(text).size();
}

struct Growth {
  const char* name;
  Worksheet worksheet;
  std::size_t lines;
  double limit;
};

constexpr Growth kGrowth[] = {
    {"conversions, 1,000,000 lines", conversion_lines, 1'000'000, 1.2},
    {"arithmetic, 1,000,000 lines", arithmetic_lines, 1'000'000, 1.2},
    {"a variable out of one of the last ten, 1,000,000 lines", recent_variables, 1'000'000, 1.6},
    {"a variable out of any earlier one, 100,000 lines", scattered_variables, 100'000, 3.0},
};

// Seconds per line, start-up left out.
double seconds_per_line(const std::string& text, std::size_t lines, double start_up) {
  const double whole = seconds_per_call([&text] { interpret(text); }, kEnoughSeconds);
  return (whole - start_up) / static_cast<double>(lines);
}

void measure_growth(TargetTable& table, const Growth& growth, int repetitions) {
  const std::string few = growth.worksheet(kFewLines);
  const std::string many = growth.worksheet(growth.lines);
  interpret(few);  // the first call makes the thread's interpreter
  std::vector<double> ratios;
  for (int i = 0; i < repetitions; ++i) {
    const double start_up = seconds_per_call([] { interpret(""); }, kEnoughSeconds / 10);
    const double short_text = seconds_per_line(few, kFewLines, start_up);
    const double long_text = seconds_per_line(many, growth.lines, start_up);
    std::fprintf(stderr, "  %s: %.0f ns a line, %.0f in 1,000\n", growth.name, long_text * 1e9,
                 short_text * 1e9);
    ratios.push_back(long_text / short_text);
  }
  table.at_most(growth.name, median(ratios), growth.limit);
}

struct Memory {
  const char* name;
  Worksheet worksheet;
  double bytes_per_line;  // allowed, beside twice the texts
};

constexpr std::size_t kMemoryLines = 1'000'000;
constexpr Memory kMemory[] = {
    {"conversions", conversion_lines, 32},
    {"arithmetic", arithmetic_lines, 32},
    {"a variable a line, out of one of the last ten", recent_variables, 400},
    {"a variable a line, out of any earlier one", scattered_variables, 400},
};

struct Usage {
  double peak;  // bytes
  double texts;
};

// Makes and runs a text in a process of its own, whose peak is that of this text alone.
Usage usage_of(Worksheet worksheet, std::size_t lines) {
  int ends[2];
  if (pipe(ends) != 0) std::abort();
  const pid_t child = fork();
  if (child < 0) std::abort();
  if (child == 0) {
    const std::string text = worksheet(lines);
    interpret(text);
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const Usage usage{static_cast<double>(used.ru_maxrss) * 1024.0,
                      static_cast<double>(text.size() + output_bytes)};
    _exit(write(ends[1], &usage, sizeof usage) == sizeof usage ? 0 : 1);
  }
  close(ends[1]);
  Usage usage{};
  const bool received = read(ends[0], &usage, sizeof usage) == sizeof usage;
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (!received || status != 0) {
    std::fprintf(stderr, "growth_bench: a child process failed\n");
    std::exit(2);
  }
  return usage;
}

void measure_memory(TargetTable& table, const Memory& memory) {
  const Usage empty = usage_of(memory.worksheet, 0);
  const Usage full = usage_of(memory.worksheet, kMemoryLines);
  const double peak = full.peak - empty.peak;
  const double allowed =
      memory.bytes_per_line * static_cast<double>(kMemoryLines) + 2.0 * full.texts;
  std::fprintf(stderr, "  %s: %.0f bytes a line, texts are %.0f of them\n", memory.name,
               peak / static_cast<double>(kMemoryLines),
               full.texts / static_cast<double>(kMemoryLines));
  table.at_most(memory.name, peak / allowed, 1.0);
}

}  // namespace

int main(int argc, char** argv) {
  const int repetitions = argc > 1 ? std::atoi(argv[1]) : 5;
  if (repetitions < 1) {
    std::fprintf(stderr, "usage: growth_bench [REPETITIONS]\n");
    return 2;
  }
  // First, while this process is small: a child starts with the memory of its parent.
  TargetTable memory_table("Peak memory at 1,000,000 lines, of what is allowed");
  for (const Memory& memory : kMemory) measure_memory(memory_table, memory);
  std::printf("\n");
  TargetTable time_table("Time per line, of that in a text of 1,000 lines");
  for (const Growth& growth : kGrowth) measure_growth(time_table, growth, repetitions);
  return memory_table.exit_status() | time_table.exit_status();
}
