#include <gtest/gtest.h>

#include <cmath>

#include "numerics/bracket_root.h"
#include "numerics/calls.h"
#include "numerics/minimise.h"
#include "numerics/trace.h"

namespace quantiverse {
namespace {

// From 0 with steps 1, 2, 4, ...
TEST(BracketRoot, SearchForASignChange) {
  const char* const limit = "ERROR:  Max_it reached w/o sign change in bi_bracket_zero()\n";
  const char* const pole = "ERROR:  Possible singularity in bi_bracket_zero()\n";
  const char* const none_at_first = "Cannot evaluate bracketing points (1)";
  const char* const none_later = "Cannot evaluate bracketing points (2)";
  const Points right = {0, -1, 1, -3, 3, 2};
  // clang-format off
  const struct {
    Function f;
    int max_it;
    const char* message;
    Points points;
    Points bracket;
  } rows[] = {
      {OF(x), 9, "", {0}, {0, 1, .5, 0, .5, 0}},
      {OF(x - 2.5), 9, "", right, {1, 3, 2, -1.5, .5, -.5}},
      {OF(x * x - .5), 9, "", {0, -1, 1, -.5}, {0, -1, -.5, -.5, .5, -.25}},  // on both sides
      {OF(x - 1), 9, "", {0, -1, 1, .5}, {0, 1, .5, -1, 0, -.5}},
      {OF(only_if(x >= 0, x - 2.5)), 9, "", {0, -1, 1, 3, 2}, {1, 3, 2, -1.5, .5, -.5}},
      {OF(x - 2.5), 2, "", right, {}},
      {OF(x - 2.5), 1, limit, {0, -1, 1, -3, 3}, {}},
      {OF(1), 0, limit, {0, -1, 1}, {}},
      {OF(kNan), 1, limit, {0, -1, 1, -3, 3}, {}},
      {OF(only_if(x != 0, 1)), 9, NO_VALUE, {0}, {}},
      {OF(only_if(x == 0, 1)), 9, none_at_first, {0, -1, 1}, {}},
      {OF(only_if(x >= 0 && x < 2, 1)), 9, none_later, {0, -1, 1, 3}, {}},
      {OF(only_if(x <= 0 && x > -2, 1)), 9, none_later, {0, -1, 1, -3}, {}},
      {OF(only_if(x != 2, x - 2.5)), 9, NO_VALUE, right, {}},
      {OF(x < 2 ? -1 : x > 2 ? 1 : -1.5), 9, "", right, {1, 3, 2, -1, 1, -1.5}},
      {OF(x < 2 ? -1 : x > 2 ? 1 : -1.6), 9, pole, right, {}},
  };
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    Points points;
    TextBuf err;
    Bracket b{7, 7, 7, 7, 7, 7};
    const bool found = bi_bracket_zero(traced(row.f, points), 0.0, 1.0, row.max_it, 2.0, b, err);
    EXPECT_EQ(found, *row.message == '\0');
    EXPECT_EQ(err.text(), row.message);
    EXPECT_EQ(points, row.points);
    const Points bracket = {b.x1, b.x2, b.xm, b.f1, b.f2, b.fm};
    EXPECT_EQ(bracket, row.bracket.empty() ? bracket : row.bracket);
  }
}

TEST(BracketRoot, Ridders) {
  const char* const one_sign = "ERROR:  Root must be bracketed in zriddr()\n";
  const char* const never = "ERROR:  Never get here in zriddr()\n";
  const char* const pole = "ERROR:  Singularity detected in zriddr()\n";
  // clang-format off
  const struct {
    Function f;
    Bracket bracket;  // x1, x2, xm, f1, f2, fm
    double ans;
    const char* message;
    Points points;
  } rows[] = {
      {OF(1), {4, 5, 6, 0, 0, 0}, 4, "", {}},
      {OF(1), {4, 5, 6, 1, -0.0, 0}, 5, "", {}},
      {OF(1), {4, 5, 6, 1, 1, 0}, 6, "", {}},
      {OF(1), {4, 5, 6, 1, 1, 1}, 0, one_sign, {}},
      {OF(x), {-1, 3, 1, -1, 3, 1}, 0, "", {0, 0}},
      {OF(-x), {-1, 3, 1, 1, -3, -1}, 0, "", {0, 0}},
      {OF(1), {0, 2, 1, 1e-200, -1e-200, 1e-200}, -1.11e30, pole, {-1.11e30}},  // s is 0
      {OF(1), {0, 2, 1, 1e-200, 1e-200, 1e-100}, 0, never, {0}},
      {OF(only_if(x != 0, 1)), {-1, 3, 1, -1, 3, 1}, 0, NO_VALUE, {0}},
      {OF(only_if(x == 1, 2)), {0, 4, 2, -1, 3, 1}, 0, NO_VALUE, {1, .5}},
      {OF(3), {0, 2e-8, 1e-8, -1, 3, 1}, 5e-9, "", {5e-9, 5e-9}},
      {OF(3.1), {0, 2e-8, 1e-8, -1, 3, 1}, 5e-9, pole, {5e-9, 5e-9}},
      {OF(x - 1e-30), {-1, 3, 1, -1, 3, 1}, 0, "", {0, .5, 0}},
  };
  // clang-format on
  Points points;
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    points.clear();
    TextBuf err;
    EXPECT_DOUBLE_EQ(zriddr(traced(row.f, points), row.bracket, 1e-8, err), row.ans);
    EXPECT_EQ(err.text(), row.message);
    EXPECT_EQ(points, row.points);
  }
  // Ends at the limit; the message keeps the answer from being evaluated.
  points.clear();
  TextBuf err;
  zriddr(traced(OF(kNan), points), {-1, 3, 1, -1, 3, kNan}, 1e-8, err);
  EXPECT_EQ(err.text(), "ERROR:  Maximum iterations reached in zriddr()\n");
  EXPECT_EQ(points.size(), 1200U);
}

// Curves of several shapes; a step to the wrong side of the bracket costs evaluations.
TEST(BracketRoot, Roots) {
  const std::vector<std::pair<Function, double>> rows = {
      {OF(std::cos(x) - x), 0.7390851332151607},
      {OF(x * x * x - 200), std::cbrt(200)},
      {OF(std::exp(x) - 5e4), std::log(5e4)},
      {OF(std::atan(x + 20)), -20},
      {OF(only_if(x >= 0, 1.5 - sqrt(x))), 2.25}};
  for (const auto& [f, root] : rows) {
    Points points;
    TextBuf err;
    Bracket bracket;
    ASSERT_TRUE(bi_bracket_zero(traced(f, points), 0.1, 0.1, 600, 2.0, bracket, err)) << root;
    points.clear();
    EXPECT_NEAR(zriddr(traced(f, points), bracket, 1e-8, err), root, 1e-8);
    EXPECT_EQ(err.text(), "");
    EXPECT_NEAR(points.back(), root, 1e-8);
    EXPECT_LT(points.size(), 15U) << root;
  }
}

// From 0 and 1; the third point is c, and next the one after a golden step.
TEST(Minimise, Valley) {
  constexpr double c = 1 + 1.618034;
  constexpr double next = c + 1.618034 * 1.618034;
  constexpr double beyond = 4 + 1.618034 * (4 - c);
  const char* const limit = "ERROR:  Too many iteratiuons in mnbrak()\n";
  // clang-format off
  const struct {
    Function f;
    int max_it;
    const char* message;
    Points points;
    Points valley;  // empty: none found
  } rows[] = {
      {OF(1), 0, "", {0, 1, c}, {0, 1, c}},
      {OF(kNan), 0, "", {0, 1, c}, {0, 1, c}},
      {OF(x), 1, limit, {0, 1, 1 - c, 100 * (1 - c)}, {}},  // a parabola that is a line
      {OF((x - 2) * (x - 2)), 1, "", {0, 1, c, 2}, {1, 2, c}},
      // Between b and c there is a hill, and then a slope.
      {OF(x > 1.9 && x < 2.1 ? 5 : (x - 2) * (x - 2)), 1, "", {0, 1, c, 2}, {0, 1, 2}},
      {OF(x > 1.9 && x < 2.1 ? .5 : (x - 2) * (x - 2)), 1, "", {0, 1, c, 2, next}, {1, c, next}},
      {OF((x - 4) * (x - 4)), 1, "", {0, 1, c, 4, beyond}, {c, 4, beyond}},
      {OF(x > 3 ? 50 : (x - 4) * (x - 4)), 1, "", {0, 1, c, 4}, {1, c, 4}},
      {OF(-x * x), 1, limit, {0, 1, c, next}, {}},
      {OF(only_if(x != 0, 1)), 9, "", {0}, {}},
      {OF(only_if(x != 1, 1)), 9, "", {0, 1}, {}},
      {OF(only_if(x < 2, 1)), 9, NO_VALUE, {0, 1, c}, {}},
      {OF(only_if(x < 3, -x * x)), 9, "", {0, 1, c, next}, {}},
  };
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    Points points;
    TextBuf err;
    Valley v{0, 1, 7, 7, 7, 7};
    const bool found = mnbrak(traced(row.f, points), v, row.max_it, err);
    EXPECT_EQ(found, !row.valley.empty());
    EXPECT_EQ(err.text(), row.message);
    Points all = row.points;
    all.insert(all.end(), row.valley.begin(), row.valley.end());
    if (found) points.insert(points.end(), {v.ax, v.bx, v.cx});
    if (found && !std::isnan(v.fb)) {
      EXPECT_EQ((Points{v.fa, v.fb, v.fc}), (Points{*row.f(v.ax), *row.f(v.bx), *row.f(v.cx)}));
    }
    ASSERT_EQ(points.size(), all.size()) << testing::PrintToString(points);
    for (std::size_t i = 0; i < all.size(); ++i) EXPECT_NEAR(points[i], all[i], 1e-12) << i;
  }
}

TEST(Minimise, Brent) {
  Points points;
  TextBuf err;
  double xmin = 7;
  // A golden step to either side, then a parabola without a step, which goes left.
  EXPECT_EQ(brent(traced(OF(x * x), points), {-1, 0, 1}, 1e-8, 3, xmin, err), 0);
  EXPECT_EQ(points, (Points{0, -.381966, .381966, -1e-10}));
  EXPECT_EQ(xmin, 0);
  EXPECT_EQ(err.text(), "ERROR:  Too many iterations in brent()\n");

  const struct {
    Function f;
    double where;
    std::size_t most;  // evaluations
  } rows[] = {{OF((x - 2) * (x - 2)), 2, 6},
              {OF(std::cosh(x + .5)), -.5, 45},  // searches among roundings
              {OF(std::fabs(x - 1.25)), 1.25, 45},
              {OF(-exp(-(x - 2.5) * (x - 2.5))), 2.5, 14}};
  for (const auto& [f, where, most] : rows) {
    err.clear_text();
    points.clear();
    const double least = brent(traced(f, points), {3, 0.5, -1}, 1e-8, 100, xmin, err);
    EXPECT_EQ(least, *f(xmin));
    EXPECT_NEAR(xmin, where, 1e-7);
    EXPECT_LE(points.size(), most) << where;
    EXPECT_EQ(err.text(), "");
  }
  for (const std::size_t limit : {0U, 1U, 5U}) {  // fails after so many evaluations
    err.clear_text();
    points.clear();
    xmin = 7;
    const Function fails = [&](double x) { return only_if(points.size() <= limit, x * x + 1); };
    EXPECT_EQ(brent(traced(fails, points), {-1, 0.1, 1}, 1e-8, 100, xmin, err), 0);
    EXPECT_EQ(xmin, 7);
    EXPECT_EQ(err.text(), NO_VALUE);
  }
}

// From (1, 2) along (1, 2), a function of the sum of both.
TEST(Minimise, AlongALine) {
  const struct {
    Function f;
    double t, fret;
    const char* message;
  } rows[] = {
      {OF((x - 6) * (x - 6)), 1, 0, ""},
      {OF(x), 0, 7, "ERROR:  Too many iteratiuons in mnbrak()\n"},
      {OF(only_if(x <= 6, -x)), 0, 7, NO_VALUE},
      {OF(only_if(x < 12, -x * x)), 0, 7, ""},
      // The valley reaches from -1.9 to 6, and has no value at its first golden point.
      {OF(only_if(x < 1 || x > 2, (x - 3) * (x - 3))), 0, 0, NO_VALUE},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    Points points;
    const Objective traced_sum = traced(row.f, points);
    const Objective f = [&traced_sum](const double* x, double* y, TextBuf& err) {
      const double sum = x[0] + x[1];
      traced_sum(&sum, y, err);
    };
    TextBuf err;
    double fret = 7;
    LineSearch line(f, 2);
    DoubleVector p = dvector(1, 2);
    p[1] = 1;
    p[2] = 2;
    DoubleVector xi = p;
    line_minimise(line, p, xi, fret, err);
    EXPECT_NEAR(xi[2], 2 * row.t, 1e-3);
    EXPECT_EQ(p[2], 2 + xi[2]);
    EXPECT_NEAR(fret, row.fret, 1e-6);
    EXPECT_EQ(err.text(), row.message);
  }
}

double square(double x) { return x * x; }

TEST(Minimise, DirectionSet) {
  const char* const limit = "ERROR:  Too many iterations.\n";
  const char* const line_limit = "ERROR:  Too many iteratiuons in mnbrak()\n";
  // clang-format off
  const struct {
    std::function<Value(const double*)> f;
    Points start, end;
    double tolerance;
    int passes;  // at most
    const char* message;
  } rows[] = {
      {OF(x[0] * 0 + 3), {1, 2}, {}, 0, 1, ""},
      {OF(square(x[0] + x[1] - 3) + 1e4 * square(x[0] - x[1] + 1) + 1), {9, -4}, {1, 2}, 1e-3, 6, ""},
      {OF(100 * square(x[1] - x[0] * x[0]) + square(1 - x[0])), {-1.2, 1}, {1, 1}, 1e-4, 40, ""},
      {OF(square(x[0] + 10 * x[1]) + 5 * square(x[2] - x[3]) +
          square(square(x[1] - 2 * x[2])) + 10 * square(square(x[0] - x[3]))),
       {3, -1, 0, 1}, {0, 0, 0, 0}, 1e-2, 999, ""},
      {OF(square(x[0] + x[1] + x[2] - 6) + 30 * square(x[0] - x[1]) + 200 * square(x[1] - x[2]) + 1),
       {9, -4, 3}, {2, 2, 2}, 1e-3, 5, ""},
      {OF(x[0] * kNan), {0, 0}, {}, 0, 4000, limit},
      // The first line ends at a NaN, the second one leads out of it to a higher value than at
      // the start, and the point beyond is lower: no direction is the best.
      {OF(x[0] == 0 ? 0 : x[1] == 0 ? kNan : x[0] == 1 ? 1 : -1), {0, 0}, {}, 0, 9, ""},
      // A failed line makes the next one fail at its start, which clears the message.
      {OF(x[0] + x[1]), {1, 2}, {1, 2}, 0, 1, ""},
      {OF(x[0] + x[1] + x[2]), {1, 2, 3}, {1, 2, 3}, 0, 1, line_limit},
  };
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    const Objective f = [&row](const double* x, double* y, TextBuf& err) {
      *y = err.is_empty_text() ? *row.f(x) : 0.0;
    };
    const int n = static_cast<int>(row.start.size());
    DoubleVector p = dvector(1, n);
    DoubleMatrix xi = dmatrix(1, n, 1, n);
    for (int i = 1; i <= n; ++i) {
      p[i] = row.start[static_cast<std::size_t>(i - 1)];
      xi[i][i] = 1;
    }
    TextBuf err;
    int iter = 0;
    double fret = 0;
    direction_set_minimise(f, p, xi, n, 1e-8, iter, fret, err);
    EXPECT_EQ(err.text(), row.message);
    EXPECT_LE(iter, row.passes);
    EXPECT_EQ(iter == 4000, row.message == limit);
    EXPECT_TRUE(fret == *row.f(&p[1]) || std::isnan(fret)) << fret;
    for (std::size_t i = 0; i < row.end.size(); ++i) {
      EXPECT_NEAR(p[static_cast<long>(i) + 1], row.end[i], row.tolerance) << i;
    }
  }
}

}  // namespace
}  // namespace quantiverse
