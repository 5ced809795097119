// Calls per second of the gamma, beta and error functions, the exponential integrals, Dawson's
// integral and the normal distribution, each beside Boost.Math's. Boost.Math computes to the last
// bits, by its own choice in extended precision, where these stop at seven figures. The command
// line is that of Google Benchmark.

#include <benchmark/benchmark.h>

#include <array>
#include <boost/math/special_functions/beta.hpp>
#include <boost/math/special_functions/erf.hpp>
#include <boost/math/special_functions/expint.hpp>
#include <boost/math/special_functions/gamma.hpp>
#include <boost/math/special_functions/hypergeometric_1F1.hpp>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "numerics/gamma.h"
#include "numerics/integrals.h"

namespace {

using namespace quantiverse;

constexpr std::size_t kPoints = 64;
constexpr double kRootOfTwo = 1.4142135623730951;

// Equal steps through a range that takes in every branch of the routine.
std::array<double, kPoints> arguments(double from, double to) {
  std::array<double, kPoints> points{};
  for (std::size_t i = 0; i < kPoints; ++i) {
    points[i] = from + (to - from) * static_cast<double>(i) / (kPoints - 1);
  }
  return points;
}

template <typename Function>
void run_range(benchmark::State& state, Function function, double from, double to) {
  const auto points = arguments(from, to);
  for (auto _ : state) {
    for (const double x : points) benchmark::DoNotOptimize(function(x));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPoints));
}

// `ours` is called as (x, err); no argument in these ranges fails.
template <typename Ours, typename Boost>
void add(const char* name, double from, double to, Ours ours, Boost boost) {
  const auto with_err = [ours](double x) {
    static thread_local TextBuf err;
    return ours(x, err);
  };
  benchmark::RegisterBenchmark((std::string(name) + "/quantiverse").c_str(),
                               [=](benchmark::State& s) { run_range(s, with_err, from, to); });
  benchmark::RegisterBenchmark((std::string(name) + "/boost").c_str(),
                               [=](benchmark::State& s) { run_range(s, boost, from, to); });
}

void add_gamma() {
  namespace bm = boost::math;
  add("gammln", 0.1, 100.0, math_func_gammln, [](double x) { return bm::lgamma(x); });
  add(
      "gammp(a=5)", 0.1, 15.0, [](double x, TextBuf& err) { return math_func_gammp(5.0, x, err); },
      [](double x) { return bm::gamma_p(5.0, x); });
  add(
      "gammq(a=5)", 0.1, 15.0, [](double x, TextBuf& err) { return math_func_gammq(5.0, x, err); },
      [](double x) { return bm::gamma_q(5.0, x); });
  // The two below P and Q, on the side that each is for.
  add(
      "gser(a=5)", 0.1, 5.9,
      [](double x, TextBuf& err) {
        double result = 0.0;
        double gln = 0.0;
        math_func_gser(result, 5.0, x, gln, err);
        return result;
      },
      [](double x) { return bm::gamma_p(5.0, x); });
  add(
      "gcf(a=5)", 6.0, 30.0,
      [](double x, TextBuf& err) {
        double result = 0.0;
        double gln = 0.0;
        math_func_gcf(result, 5.0, x, gln, err);
        return result;
      },
      [](double x) { return bm::gamma_q(5.0, x); });
  add("erf", -4.0, 4.0, math_func_erf, [](double x) { return bm::erf(x); });
  add("erfc", -4.0, 10.0, math_func_erfc, [](double x) { return bm::erfc(x); });
  add(
      "beta(z=2.5)", 0.1, 50.0, [](double x, TextBuf& err) { return math_func_beta(2.5, x, err); },
      [](double x) { return bm::beta(2.5, x); });
  add(
      "betai(2.5,4)", 0.0, 1.0,
      [](double x, TextBuf& err) { return math_func_betai(2.5, 4.0, x, err); },
      [](double x) { return bm::ibeta(2.5, 4.0, x); });
  // The fraction by itself, which Boost.Math has no name for: ibeta takes more than that.
  add(
      "betacf(2.5,4)", 0.0, 0.4,
      [](double x, TextBuf& err) { return math_func_betacf(2.5, 4.0, x, err); },
      [](double x) { return bm::ibeta(2.5, 4.0, x); });
}

void add_integrals() {
  namespace bm = boost::math;
  add("ei", 0.1, 50.0, math_func_ei, [](double x) { return bm::expint(x); });
  for (const int n : {1, 5}) {
    const std::string name = "expint(n=" + std::to_string(n) + ")";
    add(
        name.c_str(), 0.05, 20.0,
        [n](double x, TextBuf& err) { return math_func_expint(n, x, err); },
        [n](double x) { return bm::expint(n, x); });
  }
  // Boost.Math has no Dawson's integral; its hypergeometric function gives it.
  add(
      "dawson", -6.0, 6.0, [](double x, TextBuf&) { return math_func_dawson(x); },
      [](double x) { return x * bm::hypergeometric_1F1(1.0, 1.5, -x * x); });
  add(
      "CumNormal", -7.0, 7.0, [](double x, TextBuf&) { return math_func_CumNormal(x); },
      [](double x) { return 0.5 * bm::erfc(-x / kRootOfTwo); });
  add("CumNormalInv", 0.001, 0.999, math_func_CumNormalInv,
      [](double p) { return -kRootOfTwo * bm::erfc_inv(2.0 * p); });
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  add_gamma();
  add_integrals();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
