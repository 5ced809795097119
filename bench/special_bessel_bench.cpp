// Calls per second of the Bessel, Airy, elliptic and Jacobi functions, each beside Boost.Math's.
// The command line is that of Google Benchmark.

#include <benchmark/benchmark.h>

#include <boost/math/special_functions/airy.hpp>
#include <boost/math/special_functions/bessel.hpp>
#include <boost/math/special_functions/ellint_1.hpp>
#include <boost/math/special_functions/ellint_2.hpp>
#include <boost/math/special_functions/ellint_3.hpp>
#include <boost/math/special_functions/ellint_rc.hpp>
#include <boost/math/special_functions/ellint_rd.hpp>
#include <boost/math/special_functions/ellint_rf.hpp>
#include <boost/math/special_functions/ellint_rj.hpp>
#include <boost/math/special_functions/jacobi_elliptic.hpp>
#include <string>
#include <vector>

#include "numerics/bessel.h"
#include "numerics/elliptic.h"

namespace {

using namespace quantiverse;
namespace reference = boost::math;

constexpr int kPoints = 64;

using Call = double (*)(double x, TextBuf& err);

// Both are called at the same points, evenly spread over [from, to].
struct Row {
  const char* name;
  double from, to;
  Call ours;
  Call theirs;
};

double airy_ai(double x, TextBuf& err) {
  double out[4];
  math_func_airy(x, out[0], out[1], out[2], out[3], err);
  return out[0];
}

double jacobi_sn(double u, TextBuf& err) {
  double out[3];
  math_func_sncndn(u, 0.36, out[0], out[1], out[2], err);
  return out[0];
}

double their_jacobi_sn(double u, TextBuf& /*err*/) {
  double out[2];
  return reference::jacobi_elliptic(0.8, u, &out[0], &out[1]);
}

// clang-format off
const Row kRows[] = {
    {"bessi0", 0.0, 50.0, [](double x, TextBuf&) { return math_func_bessi0(x); }, [](double x, TextBuf&) { return reference::cyl_bessel_i(0, x); }},
    {"bessi1", 0.0, 50.0, [](double x, TextBuf&) { return math_func_bessi1(x); }, [](double x, TextBuf&) { return reference::cyl_bessel_i(1, x); }},
    {"bessj0", 0.0, 50.0, [](double x, TextBuf&) { return math_func_bessj0(x); }, [](double x, TextBuf&) { return reference::cyl_bessel_j(0, x); }},
    {"bessj1", 0.0, 50.0, [](double x, TextBuf&) { return math_func_bessj1(x); }, [](double x, TextBuf&) { return reference::cyl_bessel_j(1, x); }},
    {"bessk0", 0.1, 50.0, [](double x, TextBuf&) { return math_func_bessk0(x); }, [](double x, TextBuf&) { return reference::cyl_bessel_k(0, x); }},
    {"bessk1", 0.1, 50.0, [](double x, TextBuf&) { return math_func_bessk1(x); }, [](double x, TextBuf&) { return reference::cyl_bessel_k(1, x); }},
    {"bessy0", 0.1, 50.0, [](double x, TextBuf&) { return math_func_bessy0(x); }, [](double x, TextBuf&) { return reference::cyl_neumann(0, x); }},
    {"bessy1", 0.1, 50.0, [](double x, TextBuf&) { return math_func_bessy1(x); }, [](double x, TextBuf&) { return reference::cyl_neumann(1, x); }},
    {"bessi_10", 0.1, 50.0, [](double x, TextBuf& err) { return math_func_bessi(10, x, err); }, [](double x, TextBuf&) { return reference::cyl_bessel_i(10, x); }},
    {"bessj_10_below", 0.1, 10.0, [](double x, TextBuf& err) { return math_func_bessj(10, x, err); }, [](double x, TextBuf&) { return reference::cyl_bessel_j(10, x); }},
    {"bessj_10_above", 10.1, 50.0, [](double x, TextBuf& err) { return math_func_bessj(10, x, err); }, [](double x, TextBuf&) { return reference::cyl_bessel_j(10, x); }},
    {"bessj_100000", 9e4, 1.1e5, [](double x, TextBuf& err) { return math_func_bessj(100'000, x, err); }, [](double x, TextBuf&) { return reference::cyl_bessel_j(100'000, x); }},
    {"bessk_10", 0.1, 50.0, [](double x, TextBuf& err) { return math_func_bessk(10, x, err); }, [](double x, TextBuf&) { return reference::cyl_bessel_k(10, x); }},
    {"bessy_10", 0.1, 50.0, [](double x, TextBuf& err) { return math_func_bessy(10, x, err); }, [](double x, TextBuf&) { return reference::cyl_neumann(10, x); }},
    {"bessi_frac_series", 0.1, 1.9, [](double x, TextBuf& err) { return math_func_bessi_frac(2.7, x, err); }, [](double x, TextBuf&) { return reference::cyl_bessel_i(2.7, x); }},
    {"bessi_frac", 2.0, 50.0, [](double x, TextBuf& err) { return math_func_bessi_frac(2.7, x, err); }, [](double x, TextBuf&) { return reference::cyl_bessel_i(2.7, x); }},
    {"bessj_frac_series", 0.1, 1.9, [](double x, TextBuf& err) { return math_func_bessj_frac(2.7, x, err); }, [](double x, TextBuf&) { return reference::cyl_bessel_j(2.7, x); }},
    {"bessj_frac", 2.0, 50.0, [](double x, TextBuf& err) { return math_func_bessj_frac(2.7, x, err); }, [](double x, TextBuf&) { return reference::cyl_bessel_j(2.7, x); }},
    {"bessk_frac", 2.0, 50.0, [](double x, TextBuf& err) { return math_func_bessk_frac(2.7, x, err); }, [](double x, TextBuf&) { return reference::cyl_bessel_k(2.7, x); }},
    {"bessy_frac", 2.0, 50.0, [](double x, TextBuf& err) { return math_func_bessy_frac(2.7, x, err); }, [](double x, TextBuf&) { return reference::cyl_neumann(2.7, x); }},
    {"airy_below", -20.0, -0.1, airy_ai, [](double x, TextBuf&) { return reference::airy_ai(x); }},
    {"airy_above", 0.1, 20.0, airy_ai, [](double x, TextBuf&) { return reference::airy_ai(x); }},
    {"carlsons_rc", 0.1, 50.0, [](double x, TextBuf& err) { return math_func_carlsons_rc(x, 2.0, err); }, [](double x, TextBuf&) { return reference::ellint_rc(x, 2.0); }},
    {"carlsons_rd", 0.1, 50.0, [](double x, TextBuf& err) { return math_func_carlsons_rd(x, 2.0, 3.0, err); }, [](double x, TextBuf&) { return reference::ellint_rd(x, 2.0, 3.0); }},
    {"carlsons_rf", 0.1, 50.0, [](double x, TextBuf& err) { return math_func_carlsons_rf(x, 2.0, 3.0, err); }, [](double x, TextBuf&) { return reference::ellint_rf(x, 2.0, 3.0); }},
    {"carlsons_rj", 0.1, 50.0, [](double x, TextBuf& err) { return math_func_carlsons_rj(x, 2.0, 3.0, 4.0, err); }, [](double x, TextBuf&) { return reference::ellint_rj(x, 2.0, 3.0, 4.0); }},
    {"ellf", 0.1, 1.5, [](double x, TextBuf& err) { return math_func_ellf(x, 0.8, err); }, [](double x, TextBuf&) { return reference::ellint_1(0.8, x); }},
    {"elle", 0.1, 1.5, [](double x, TextBuf& err) { return math_func_elle(x, 0.8, err); }, [](double x, TextBuf&) { return reference::ellint_2(0.8, x); }},
    {"ellpi", 0.1, 1.5, [](double x, TextBuf& err) { return math_func_ellpi(x, 0.3, 0.8, err); }, [](double x, TextBuf&) { return reference::ellint_3(0.8, -0.3, x); }},
    {"sncndn", -5.0, 5.0, jacobi_sn, their_jacobi_sn},
};
// clang-format on

void run(benchmark::State& state, Call call, double from, double to) {
  std::vector<double> points;
  points.reserve(kPoints);
  for (int i = 0; i < kPoints; ++i) points.push_back(from + (to - from) * i / (kPoints - 1));
  TextBuf err;
  for (auto _ : state) {
    for (const double x : points) benchmark::DoNotOptimize(call(x, err));
  }
  state.SetItemsProcessed(state.iterations() * kPoints);
  if (!err.is_empty_text()) state.SkipWithError("a routine failed");
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  for (const Row& row : kRows) {
    const std::string name = row.name;
    benchmark::RegisterBenchmark((name + "/quantiverse").c_str(), run, row.ours, row.from, row.to);
    benchmark::RegisterBenchmark((name + "/boost").c_str(), run, row.theirs, row.from, row.to);
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
