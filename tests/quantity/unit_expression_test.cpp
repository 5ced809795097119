#include "quantity/unit_expression.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "support/cases.h"

namespace quantiverse {
namespace {

// "kg^1 m^1 s^-2": exponents without the help of the renderer.
std::string spelled(const Exponents& exps) {
  const char* const names[] = {"rad", "s", "kg", "m", "degK", "mol", "diff", "C"};
  TextBuf text;
  for (std::size_t slot = 0; slot < kSlotCount; ++slot) {
    if (exps[slot] == 0.0) continue;
    text.append_three(text.is_empty_text() ? "" : " ", names[slot], "^");
    text.append_double(exps[slot]);
  }
  return text.release();
}

struct Read {
  bool ok = false;
  UnitDef unit;
  std::string rest;
  std::string err;
};

Read read(std::string_view text) {
  Units units;
  Cursor expptr(text);
  Read r;
  TextBuf err;
  err.append_text("left over");
  r.ok = parse_unit_expression(units, expptr, r.unit, err);
  r.rest = expptr.rest();
  r.err = err.text();
  return r;
}

std::vector<Case> unit_cases(const std::string& section, std::size_t fields) {
  return cases("quantity/unit_expression.txt", section, fields);
}

TEST(UnitExpression, IsRead) {
  for (const Case& c : unit_cases("is read", 4)) {
    const Read r = read(c[0]);
    EXPECT_TRUE(r.ok) << c[0];
    EXPECT_EQ(r.rest, c[1]) << c[0];
    EXPECT_EQ(spelled(r.unit.exps), c[2]) << c[0];
    if (c[3] != "-") {
      EXPECT_EQ(r.unit.w0, number(c[3])) << c[0];
    }
    EXPECT_EQ(r.unit.offset, 0.0) << c[0];
    EXPECT_EQ(r.err, "") << c[0];
  }
}

TEST(UnitExpression, IsRefused) {
  for (const Case& c : unit_cases("is refused", 2)) {
    const Read r = read(c[0]);
    EXPECT_FALSE(r.ok) << c[0];
    EXPECT_EQ(r.rest, c[0]);
    EXPECT_EQ(r.err, c[1]) << c[0];
  }
}

TEST(UnitExpression, LeavesTheErrorOfALaterFactor) {
  for (const Case& c : unit_cases("error of a later factor", 3)) {
    const Read r = read(c[0]);
    EXPECT_TRUE(r.ok) << c[0];
    EXPECT_EQ(r.rest, c[1]) << c[0];
    EXPECT_EQ(r.err, c[2]) << c[0];
  }
  // A scale of zero is found before it divides anything.
  EXPECT_EQ(spelled(read("m / lightyear^30").unit.exps), "m^1");
}

TEST(UnitExpression, OffsetOfALoneTemperature) {
  for (const Case& c : unit_cases("offset", 2)) {
    EXPECT_EQ(read(c[0]).unit.offset, number(c[1])) << c[0];
  }
}

// Powers first, each then times the scale so far; a factor is finished before it is combined.
TEST(UnitExpression, OrderOfArithmetic) {
  const double ft = 3.28083989501312;
  const double hr = 0.000277777777778;
  const double lbf = 0.224808943099711;
  EXPECT_EQ(read("km/hr").unit.w0, 0.001 / hr);
  EXPECT_EQ(read("ft lbf").unit.w0, ft * lbf);
  EXPECT_EQ(read("lightyear^3").unit.w0, std::pow(1.05702099772212e-16, 3));
  EXPECT_EQ(read("ft^3").unit.w0, std::pow(ft, 3));
  EXPECT_EQ(read("ft^3 lbf^0.5/hr^2 ft").unit.w0,
            std::pow(ft, 3) * std::pow(lbf, 0.5) / std::pow(hr, 2) / ft);
  EXPECT_EQ(read("ft (hr lbf/ft) hr").unit.w0, ft * (hr * lbf / ft) * hr);
  EXPECT_EQ(spelled(read("lbf^0.1 ft^-0.3").unit.exps), spelled({0, -0.2, 0.1, -0.2}));
}

TEST(UnitExpression, OneName) {
  Units units;
  for (const char* text : {" \\\n kg^2", "%", "m"}) {
    Cursor expptr{std::string_view(text)};
    DimValue record;
    EXPECT_TRUE(is_unit(units, expptr, record)) << text;
    EXPECT_TRUE(expptr.at_stop() || expptr.peek() == '^') << text;
  }
  for (const char* text : {"", ";m", "# m", " ;m", "x", "(m)", "2"}) {
    Cursor expptr{std::string_view(text)};
    DimValue record;
    EXPECT_FALSE(is_unit(units, expptr, record)) << text;
    EXPECT_EQ(expptr.rest(), text);
  }
}

}  // namespace
}  // namespace quantiverse
