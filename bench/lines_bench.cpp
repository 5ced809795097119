// Speed of single things. The command line is that of Google Benchmark.

#include <benchmark/benchmark.h>

#include <string>

#include "allocations.h"
#include "builtins/function_table.h"
#include "language/evaluator.h"
#include "language/interpreter.h"
#include "language/statement.h"
#include "quantiverse/quantiverse.h"
#include "text/scanner.h"
#include "worksheets.h"

namespace {

using namespace quantiverse;

using Worksheet = std::string (*)(std::size_t size);

// A text through the door; the argument is its size, and a line or a term is an item.
void run_text(benchmark::State& state, Worksheet worksheet) {
  const std::string text = worksheet(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(interpret_dimensional_input_lines(text));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

BENCHMARK_CAPTURE(run_text, feet_to_metres, bench::feet_lines)->Arg(1)->Arg(1'000);
BENCHMARK_CAPTURE(run_text, conversions, bench::conversion_lines)->Arg(1'000);
BENCHMARK_CAPTURE(run_text, arithmetic, bench::arithmetic_lines)->Arg(1)->Arg(1'000);
BENCHMARK_CAPTURE(run_text, recent_variables, bench::recent_variables)
    ->RangeMultiplier(10)
    ->Range(1'000, 100'000);
BENCHMARK_CAPTURE(run_text, scattered_variables, bench::scattered_variables)
    ->RangeMultiplier(10)
    ->Range(1'000, 100'000);
BENCHMARK_CAPTURE(run_text, long_sum, bench::long_sum)->Arg(1'000'000);

// Programs that have been compiled in an interpreter of their own. The text must live as long.
struct Compiled {
  explicit Compiled(std::string_view text) {
    Cursor expptr(text);
    CompiledStack line;
    DimValue value;
    while (!is_end_of_text(expptr)) {
      if (!compile_input_line(interpreter, expptr, line, value, err)) return;
      program.append(line.program);
      if (!is_end_of_text(expptr)) expptr.step();
    }
  }

  Interpreter interpreter{builtin_functions()};
  Program program;
  TextBuf err;
};

constexpr std::string_view kPressureDrop =
    "d = 0.1 m\n"
    "v = 2 m/s\n"
    "len = 100 m\n"
    "rho = 998 kg/m^3\n"
    "f = 0.316 / (rho * v * d / (0.001 kg/m s))^0.25\n"
    "f * (len / d) * rho * v^2 / 2\n";

constexpr std::string_view kVectors =
    "a = [1, 2, 3] m\n"
    "b = [4, 5, 6] N\n"
    "a[3] = 7 ft\n"
    "c = cross(a, b)\n"
    "sqrt(dot(c, c)) * sin(30 deg) - Number(2 ft, in) * 1 J\n";

// Runs a program again and again; an operation is an item. None may allocate.
void evaluate(benchmark::State& state, std::string_view text) {
  Compiled compiled(text);
  TextBuf& err = compiled.err;
  if (err.is_empty_text()) eval_compiled_stck(compiled.interpreter, compiled.program, err);
  if (!err.is_empty_text()) {
    state.SkipWithError(std::string(err.text()).c_str());
    return;
  }
  const std::size_t before = bench::allocations();
  std::size_t runs = 0;
  std::size_t allocated = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(eval_compiled_stck(compiled.interpreter, compiled.program, err));
    ++runs;
    allocated = bench::allocations() - before;
  }
  const double operations =
      static_cast<double>(runs) * static_cast<double>(compiled.program.ops().size());
  state.SetItemsProcessed(static_cast<std::int64_t>(operations));
  state.counters["allocs_per_op"] = static_cast<double>(allocated) / operations;
  if (allocated != 0) state.SkipWithError("evaluation allocates");
}

BENCHMARK_CAPTURE(evaluate, pressure_drop, kPressureDrop);
BENCHMARK_CAPTURE(evaluate, vectors, kVectors);

}  // namespace

BENCHMARK_MAIN();
