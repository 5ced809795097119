#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "calls.h"
#include "numerics/bessel.h"

namespace quantiverse::test {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

// The functions whose names begin with a capital and that take plain numbers.
std::vector<FunctionRow> special_rows() {
  std::vector<FunctionRow> rows;
  for (const FunctionRow& row : function_rows()) {
    if (row.routine != nullptr && row.name[0] >= 'A' && row.name[0] <= 'Z') rows.push_back(row);
  }
  return rows;
}

TEST(Special, OneFaultIsShownAndTheLastArgumentComesFirst) {
  const DimValue dimensional = scalar(0.5, slot(kSlotLength));
  const DimValue vector = vec(1, 2, 3);
  for (const FunctionRow& row : special_rows()) {
    const std::string computing = std::string("ERROR:  Computing ") + row.name;
    const auto last = static_cast<std::size_t>(row.arguments - 1);
    for (std::size_t i = 0; i <= last; ++i) {
      std::vector<DimValue> arguments(last + 1, scalar(-0.5));
      for (std::size_t before = 0; before < i; ++before) arguments[before] = vector;
      arguments[i] = dimensional;
      EXPECT_EQ(call(row.name, arguments).err, computing + "() of a dimensional number.\n");
      for (std::size_t before = 0; before < i; ++before) arguments[before] = dimensional;
      arguments[i] = vec(1, 2, 3, slot(kSlotLength));
      const Called called = call(row.name, arguments);
      EXPECT_EQ(called.err, computing + "() of a vector.\n");
      EXPECT_TRUE(same_value(called.value, {}));
    }
  }
}

TEST(Special, AnglesAndAmountsArePlainAndInfinityGivesZero) {
  for (const FunctionRow& row : special_rows()) {
    SCOPED_TRACE(row.name);
    const auto count = static_cast<std::size_t>(row.arguments);
    Exponents exps = slot(kSlotAngle, 2);
    exps[kSlotAmount] = -1;
    const Called plain = call(row.name, std::vector<DimValue>(count, scalar(0.5)));
    const Called angles = call(row.name, std::vector<DimValue>(count, scalar(0.5, exps)));
    EXPECT_EQ(plain.err, angles.err);
    EXPECT_TRUE(same_value(plain.value, angles.value));
    EXPECT_EQ(angles.value.exps, Exponents{});
    // Also where the other arguments are out of the domain.
    for (std::size_t i = 0; i < count; ++i) {
      std::vector<DimValue> arguments(count, scalar(-0.5));
      arguments[i] = scalar(kInf);
      const Called called = call(row.name, arguments);
      EXPECT_EQ(called.err, "");
      EXPECT_TRUE(same_value(called.value, {}));
    }
  }
}

TEST(Special, WholeOrdersHaveARoutineOfTheirOwn) {
  const struct {
    const char* name;
    double (*whole)(int, double, TextBuf&);
    double (*any)(double, double, TextBuf&);
  } rows[] = {
      {"BesselI", math_func_bessi, math_func_bessi_frac},
      {"BesselJ", math_func_bessj, math_func_bessj_frac},
      {"BesselK", math_func_bessk, math_func_bessk_frac},
      {"BesselY", math_func_bessy, math_func_bessy_frac},
  };
  TextBuf err;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    for (const int n : {-3, 0, 2}) {
      EXPECT_EQ(number(row.name, {scalar(n), scalar(2.5)}), row.whole(n, 2.5, err));
    }
    for (const double nu : {-2.5, 2.0000001}) {
      EXPECT_EQ(number(row.name, {scalar(nu), scalar(2.5)}), row.any(nu, 2.5, err));
    }
    const double overflown = std::numeric_limits<int>::min();
    EXPECT_TRUE(std::isnan(number(row.name, {scalar(overflown), scalar(1)})));
    EXPECT_TRUE(std::isnan(number(row.name, {scalar(1e300), scalar(1)})));
  }
  EXPECT_EQ(err.text(), "");
}

TEST(Special, GammaIsTheExponentialUnlessItsLogarithmFailed) {
  for (const double x : {0.1, 1.0, 7.5, 171.0}) {
    EXPECT_EQ(number("GammaFunc", {scalar(x)}), std::exp(number("LogGammaFunc", {scalar(x)})));
  }
  EXPECT_TRUE(same_value(call("GammaFunc", {scalar(-1)}).value, {}));
}

}  // namespace
}  // namespace quantiverse::test
