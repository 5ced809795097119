#include "numerics/multiroot.h"

#include <gtest/gtest.h>

#include <cmath>

#include "numerics/calls.h"
#include "numerics/factorise.h"
#include "numerics/trace.h"

namespace quantiverse {
namespace {

using Rows = std::vector<Points>;

DoubleVector vector_of(const Points& numbers) {
  DoubleVector v = dvector(1, static_cast<long>(numbers.size()));
  for (std::size_t i = 0; i < numbers.size(); ++i) v[static_cast<long>(i) + 1] = numbers[i];
  return v;
}

DoubleMatrix matrix_of(const Rows& rows) {
  const long n = static_cast<long>(rows.size());
  DoubleMatrix m = dmatrix(1, n, 1, n);
  for (long i = 1; i <= n; ++i) {
    const DoubleVector row = vector_of(rows[static_cast<std::size_t>(i - 1)]);
    for (long j = 1; j <= n; ++j) m[i][j] = row[j];
  }
  return m;
}

// An element of A transposed times B.
double times(DoubleMatrix& a, DoubleMatrix& b, int n, int i, int j) {
  double sum = 0;
  for (int k = 1; k <= n; ++k) sum += a[k][i] * b[k][j];
  return sum;
}

const Rows kMatrix = {{0, 2, -1, 3}, {4, -1, 0.5, 2}, {-4, 6, 1, 7}, {1, 8, -3, 0.25}};

TEST(Factorise, LU) {
  TextBuf err;
  DoubleMatrix a = matrix_of(kMatrix);
  IntVector indx = ivector(1, 4);
  double d = 0;
  ludcmp(a, 4, indx, d, err);
  for (int i = 1; i <= 4; ++i) {
    if (indx[i] != i) d = -d;
    DoubleVector b = vector_of({0, 0, 0, 0});
    for (int j = 1; j <= 4; ++j) b[j] = matrix_of(kMatrix)[j][i];
    lu_back_substitute(a, 4, indx, b);  // a column of the matrix; the first begins with 0
    for (int j = 1; j <= 4; ++j) EXPECT_NEAR(b[j], i == j ? 1 : 0, 1e-14);
  }
  EXPECT_EQ(d, 1);
}

TEST(Factorise, Pivots) {
  const struct {
    Rows matrix;
    int pivot;  // the row for the last column but one
    double d, last;
    const char* message;
  } rows[] = {{{{1, 2}, {1, 2}}, 2, -1, 1e-20, ""},   // the later of two equals; a zero pivot
              {{{2, 1000}, {1, 1}}, 2, -1, 998, ""},  // scaled by the row
              {{{1, 1}, {1, 2}}, 1, 1, 1, ""},
              {{{1, 1000, 0}, {1, 0, 0}, {0, 5, 5}}, 3, 1, -1000, ""},  // the scale moves along
              {{{kNan, 1}, {kNan, 1}}, 1, 1, kNan, ""},
              {{{1, 2}, {0, 0}}, 0, 1, 0, "ERROR:  Singular matrix in routine ludcmp.\n"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    const int n = static_cast<int>(row.matrix.size());
    DoubleMatrix a = matrix_of(row.matrix);
    IntVector indx = ivector(1, n);
    double d = 0;
    TextBuf err;
    ludcmp(a, n, indx, d, err);
    EXPECT_EQ(err.text(), row.message);
    EXPECT_EQ(indx[n - 1], row.pivot);
    EXPECT_EQ(d, row.d);
    EXPECT_TRUE(a[n][n] == row.last || std::isnan(row.last)) << a[n][n];
  }
}

// R transposed times R is what A transposed times A was.
TEST(Factorise, Householder) {
  DoubleMatrix original = matrix_of(kMatrix);
  DoubleMatrix a = original;
  DoubleMatrix r = dmatrix(1, 4, 1, 4);
  DoubleVector c = dvector(1, 4);
  DoubleVector d = dvector(1, 4);
  EXPECT_FALSE(qr_decompose(a, 4, c, d));
  for (int i = 1; i <= 4; ++i) {
    r[i][i] = d[i];
    for (int j = i + 1; j <= 4; ++j) r[i][j] = a[i][j];
  }
  for (int i = 1; i <= 4; ++i) {
    for (int j = 1; j <= 4; ++j) {
      EXPECT_NEAR(times(r, r, 4, i, j), times(original, original, 4, i, j), 1e-12);
    }
  }
  const struct {
    Rows matrix;
    bool sing;
    double c2, d3;
  } rows[] = {{{{4, 0, 0}, {0, 1, 0}, {0, 0, 1}}, false, 0.125, 1},  // the scale is still 4
              {{{1, 0, 0}, {0, 0, 0}, {0, 0, 1}}, false, 0, kNan},   // a later column of zeros
              {{{0, 1, 0}, {0, 0, 0}, {0, 0, 2}}, true, 0, 2},
              {{{1, 0, 0}, {0, 1, 0}, {0, 0, 0}}, true, 2, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    a = matrix_of(row.matrix);
    EXPECT_EQ(qr_decompose(a, 3, c, d), row.sing);
    EXPECT_EQ(c[2], row.c2);
    EXPECT_TRUE(d[3] == row.d3 || (std::isnan(d[3]) && std::isnan(row.d3))) << d[3];
  }
}

TEST(Factorise, Update) {
  for (const Points& by : Rows{{1, -2, 3}, {0, 1, -5}, {4, 0, 0}, {0, 0, 2}, {3, 1, 0}, {}}) {
    SCOPED_TRACE(testing::PrintToString(by));
    DoubleMatrix r = matrix_of({{2, 1, 3}, {0, -4, 0.5}, {0, 0, 1}});
    DoubleMatrix qt = matrix_of({{0.6, -0.8, 0}, {0.8, 0.6, 0}, {0, 0, 1}});
    DoubleMatrix sum = r;
    DoubleMatrix start = qt;
    DoubleVector u = vector_of(by.empty() ? Points{0, 0, 0} : by);
    const DoubleVector v = vector_of({2, 0, -1});
    for (int i = 1; i <= 3; ++i) {
      for (int j = 1; j <= 3; ++j) sum[i][j] += u[i] * v[j];
    }
    qr_update(r, qt, 3, u, v);
    for (int i = 1; i <= 3; ++i) {
      for (int j = 1; j <= 3; ++j) {
        EXPECT_NEAR(times(qt, qt, 3, i, j), i == j ? 1 : 0, 1e-14);
        EXPECT_NEAR(times(qt, r, 3, i, j), times(start, sum, 3, i, j), 1e-13);
        EXPECT_NEAR(r[i][j], j < i ? 0 : r[i][j], 1e-14);
      }
    }
  }
  DoubleMatrix r = matrix_of({{1, 2}, {3, 4}});
  DoubleMatrix qt = matrix_of({{5, 6}, {7, 8}});
  qr_rotate(r, qt, 2, 1, 0.0, 0.0);
  EXPECT_EQ((Points{r[1][1], r[2][2], qt[1][2], qt[2][1]}), (Points{3, -2, 8, -5}));
}

// From 0, where f is 8. The slope is g times p, with p no longer than stpmax.
TEST(Multiroot, LineSearch) {
  const char* const roundoff = "ERROR:  Roundoff problem in lnsrch.\n";
  // clang-format off
  const struct {
    Function f;
    double g, p, stpmax;
    bool check;
    const char* message;
    Points points;  // the first of them, where the step shrinks to nothing
  } rows[] = {
      {OF(3.9), -16, 1, 9, true, "", {1}},
      {OF(3.9), -8, 10, 2, true, "", {2}},
      {OF(x == 1 ? sqrt(2 * 7.9995) : 0), -16, 1, 9, true, "", {1, 8 / 15.9995}},  // hardly falls
      {OF(x == 1 ? 6 : x > .2 ? 4 : 0), -16, 1, 9, true, "", {1, 16.0 / 52, .14434088349372}},
      {OF(x == 1 ? 100 : x > .06 ? 4 : 0), -16, 1, 9, true, "", {1, .1, .05}},
      {OF(x > 1e-3 ? kInf : 0), -16, 1, 9, true, "", {1, .1, .01, .001, .0001}},
      {OF(x == 1 ? 6 : sqrt(2 * 8.103)), 1, 1, 9, true, roundoff, {1, .1}},
      {OF(6), 20, 1, 9, false, "", {1, 1, .1}},  // the parabola is least where it was
      {OF(only_if(x != 1, 0)), -16, 1, 9, true, NO_VALUE, {1}},
      {OF(kNan), -16, 1, 9, false, "", {1, .1, .01}},
      {OF(9), -16, kNan, 9, false, "", {kNan}},
      {OF(9), -16, kInf, kInf, false, "", {kInf}},
      {OF(9), -16, 0, 9, false, "", {0}},
  };
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    Points points;
    TextBuf err;
    DoubleVector p = vector_of({row.p});
    DoubleVector x = vector_of({7});
    DoubleVector fvec = vector_of({7});
    double f = 7;
    const bool check = lnsrch(traced(row.f, points), 1, vector_of({0}), 8, vector_of({row.g}), p, x,
                              f, row.stpmax, fvec, err);
    EXPECT_EQ(check, row.check);
    EXPECT_EQ(err.text(), row.message);
    EXPECT_EQ(x[1], check ? points.back() : 0);
    ASSERT_GE(points.size(), row.points.size());
    EXPECT_TRUE(!check || points.size() == row.points.size()) << points.size();
    for (std::size_t i = 0; i < row.points.size() && std::isfinite(row.p); ++i) {
      EXPECT_NEAR(points[i], row.points[i], 1e-12) << i;
    }
  }
}

#define SYSTEM(...) []([[maybe_unused]] const double* x) -> Points { return {__VA_ARGS__}; }

TEST(Multiroot, Solvers) {
  const char* const broydn_limit = "ERROR:  MAXITS exceeded in broydn.\n";
  const char* const newt_limit = "ERROR:  MAXITS exceeded in newt\n";
  const char* const zero_column = "ERROR:  Singular Jacobian in brodyn.\n";
  const char* const zero_row = "ERROR:  Singular matrix in routine ludcmp.\n";
  const char* const none = "no root";  // without a message
  // clang-format off
  const struct {
    std::function<Points(const double*)> f;
    Points start, end;
    const char* broydn;
    const char* newt;
  } rows[] = {
      {SYSTEM(3 * x[0] - 6), {40}, {2}, "", ""},
      {SYSTEM(10 * (x[1] - x[0] * x[0]), 1 - x[0]), {-1.2, 1}, {1, 1}, "", ""},
      {SYSTEM(x[0] * x[0] + x[1] * x[1] - 4, exp(x[0]) + x[1] - 1),
       {1, -1}, {1.00416873847466, -1.72963728702587}, "", ""},
      {SYSTEM(x[0] + x[1] + x[2] - 6, x[0] * x[1] * x[2] - 6,
              x[0] * x[0] + x[1] * x[1] + x[2] * x[2] - 14), {.5, 2.5, 3.5}, {1, 2, 3}, "", ""},
      {SYSTEM(9e-9, -9e-9), {4, 5}, {4, 5}, "", ""},
      {SYSTEM(1e9 * (x[0] - 3)), {3 + 5e-9}, {3}, "", ""},
      {SYSTEM(x[1], x[1] - 1), {0, 5}, {}, zero_column, newt_limit},
      {SYSTEM(x[1] + x[0], 1), {0, 5}, {}, zero_column, zero_row},
      {SYSTEM(x[0] < 0 ? 1 - x[0] : 1 + 1e-3 * x[0]), {0}, {0}, none, ""},  // not flat enough
      {SYSTEM(x[0] < 0 ? 1 - x[0] : 1 + 1e-9 * x[0]), {0}, {0}, none, none},
      {SYSTEM(1e100 * exp(-x[0])), {1}, {}, broydn_limit, newt_limit},
      {SYSTEM(kNan, kNan), {1, 2}, {1, 2}, "", ""},
      {SYSTEM(x[0] == 1 ? 1 : kNan, x[1]), {1, 2}, {}, zero_column, zero_row},
      {SYSTEM(x[0] == 1 && x[1] == 2 ? 1 : kInf, x[1]), {1, 2}, {}, none, ""},
      // Linear up to the second point, which makes the updated matrix exactly singular.
      {SYSTEM(x[0] == 17 ? -2 : x[0] - 16 + 10 * (x[1] - 16) - 11, x[0] == 17 ? 0 : x[1] - 17),
       {16, 16}, {}, "ERROR:  r singular in broydn.\n", zero_row},
  };
  // clang-format on
  for (const auto& row : rows) {
    const int n = static_cast<int>(row.start.size());
    const Objective f = [&row](const double* x, double* y, TextBuf&) {
      for (const double value : row.f(x)) *y++ = value;
    };
    for (const bool newton : {false, true}) {
      SCOPED_TRACE((newton ? "newt " : "broydn ") + std::to_string(&row - rows));
      const std::string_view expected = newton ? row.newt : row.broydn;
      TextBuf err;
      DoubleVector x = vector_of(row.start);
      EXPECT_EQ((newton ? newt : broydn)(f, x, n, err), expected.empty());
      EXPECT_EQ(err.text(), expected == none ? "" : expected);
      for (std::size_t i = 0; i < row.end.size(); ++i) {
        EXPECT_NEAR(x[static_cast<long>(i) + 1], row.end[i], 1e-6) << i;
      }
    }
  }
}

// Where a linear system is evaluated, and what comes of a failure at each evaluation.
TEST(Multiroot, Evaluations) {
  std::size_t bad = 0;
  Points points;
  const Objective f = [&](const double* x, double* y, TextBuf& err) {
    points.push_back(x[0]);
    if (points.size() == bad) err.append_text(NO_VALUE);
    y[0] = err.is_empty_text() ? x[0] + x[1] - 3 : 0;
    y[1] = err.is_empty_text() ? x[0] - x[1] + 1 : 0;
  };
  for (const auto& solver : {broydn, newt}) {
    for (bad = 0; bad <= 4; ++bad) {
      points.clear();
      TextBuf err;
      DoubleVector x = vector_of({0, 0});
      EXPECT_EQ(solver(f, x, 2, err), bad <= 1);
      EXPECT_EQ(err.text(), bad == 0 ? "" : NO_VALUE);
      EXPECT_EQ(x[1], points.back());
      ASSERT_EQ(points.size(), bad == 0 ? 4U : bad);
      const Points expected = {0, 1e-6, 0, 1};
      for (std::size_t i = 0; i < points.size(); ++i) EXPECT_NEAR(points[i], expected[i], 1e-8);
    }
  }
}

// With the same Jacobian both go the same way, as far back as the first line search takes them.
TEST(Multiroot, FirstSteps) {
  Points points[2];
  for (const bool newton : {false, true}) {
    const Objective f = [&](const double* x, double* y, TextBuf&) {
      points[newton ? 1 : 0].push_back(x[1]);
      y[0] = x[1] - x[0] * x[0];
      y[1] = 1 - x[0];
    };
    TextBuf err;
    DoubleVector x = vector_of({-1.2, 1});
    (newton ? newt : broydn)(f, x, 2, err);
  }
  for (std::size_t i = 0; i < 5; ++i) EXPECT_NEAR(points[0].at(i), points[1].at(i), 1e-6) << i;
}

}  // namespace
}  // namespace quantiverse
