#include "quantity/unit_expression.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

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

constexpr const char* kIncomplete = "ERROR: Math expression incomplete.\n";
constexpr const char* kOverflow = "ERROR:  Numerical over or underflow.\n";
constexpr const char* kParenthesis = "ERROR:  Bad parenthesis.\n";
constexpr const char* kExponent = "ERROR: Bad units exponent.\n";
constexpr const char* kExponentOfM = "ERROR: Bad exponent for unit 'm'.\n";

// clang-format off

TEST(UnitExpression, IsRead) {
  const struct { const char *text, *rest, *exps; double w0; } cases[] = {
      {"m", "", "m^1", 1}, {" \t km ", "", "m^1", 0.001}, {"", "", "", 1}, {" # m\n", "\n", "", 1},
      {"km/hr", "", "s^-1 m^1", 0.001 / 0.000277777777778}, {"m;s", ";s", "m^1", 1},
      {"ft lbf", "", "s^-2 kg^1 m^2", 3.28083989501312 * 0.224808943099711},
      {"m\\\n s", "", "s^1 m^1", 1}, {"m\ns", "\ns", "m^1", 1}, {"m # s", "", "m^1", 1},
      // Operators where a factor may begin are empty factors.
      {"* m", "", "m^1", 1}, {"/ s", "", "s^-1", 1}, {"m * * s", "", "s^1 m^1", 1},
      {"m//s", "", "s^-1 m^1", 1}, {"m / / s", "", "s^-1 m^1", 1}, {"m */ s", "", "s^-1 m^1", 1},
      {"** m", "", "m^1", 1}, {"*/m", "", "m^-1", 1}, {"m *", "", "m^1", 1}, {"m / ", "", "m^1", 1},
      {"*", "", "", 1}, {"m * # x\n", "\n", "m^1", 1},
      // Behind the first "/" of a level everything divides.
      {"kg m / s kg", "", "s^-1 m^1", 1}, {"W / m^2 * degK", "", "s^-3 kg^1 degK^-1", 1},
      {"m/s*s/s", "", "s^-3 m^1", 1}, {"/s m", "", "s^-1 m^-1", 1},
      {"m/(s/kg m) s", "", "s^-2 kg^1 m^2", 1}, {"(m/s) kg", "", "s^-1 kg^1 m^1", 1},
      {"m^-2/s^-2", "", "s^2 m^-2", 1}, {"((m)(s))", "", "s^1 m^1", 1},
      // Where the units end and the arithmetic begins.
      {"m + 3", " + 3", "m^1", 1}, {"m * 3", " * 3", "m^1", 1}, {"m / 3", " / 3", "m^1", 1},
      {"m**3", "3", "m^1", 1}, {"//5", "/5", "", 1}, {"m / / 3", "3", "m^1", 1},
      {"m (5)", " (5)", "m^1", 1}, {"m / (5)", " / (5)", "m^1", 1}, {"m kg2", " kg2", "m^1", 1},
      {"m)", ")", "m^1", 1}, {"(m/s)^2", "^2", "s^-1 m^1", 1}, {"m^2^3", "^3", "m^2", 1},
      {"m s, x", ", x", "s^1 m^1", 1}, {"m\xc3\xa9", "\xc3\xa9", "m^1", 1}, {"m\r", "\r", "m^1", 1},
      {"m 5", " 5", "m^1", 1},
      // Exponents: a number with its sign, operators, products in parentheses.
      {"m^-2", "", "m^-2", 1}, {"m ^ +2.5", "", "m^2.5", 1}, {"m^1d1s", "", "s^1 m^10", 1},
      {"m^1e", "e", "m^1", 1}, {"m^*2", "", "m^2", 1}, {"m^/2", "", "m^0.5", 1},
      {"m^//4", "", "m^4", 1}, {"m^*/*2", "", "m^0.5", 1}, {"m^(1/2)", "", "m^0.5", 1},
      {"m^(2/4)", "", "m^0.5", 1}, {"m^( 2 * 3 )s", "", "s^1 m^6", 1}, {"m^(1 -2)", "", "m^-2", 1},
      {"m^((2)(3))", "", "m^6", 1}, {"m^/(2 2)", "", "m^0.25", 1}, {"m^0 s", "", "s^1", 1},
      {"m^2 s", "", "s^1 m^2", 1}, {"%^2", "", "", 1e4}, {"m %", "", "m^1", 100},
      // Only a large scale counts as an overflow.
      {"lightyear^3", "", "m^3", std::pow(1.05702099772212e-16, 3)},
      {"lightyear^30", "", "m^30", 0},
  };
  for (const auto& c : cases) {
    const Read r = read(c.text);
    EXPECT_TRUE(r.ok) << c.text;
    EXPECT_EQ(r.rest, c.rest) << c.text;
    EXPECT_EQ(spelled(r.unit.exps), c.exps) << c.text;
    EXPECT_EQ(r.unit.w0, c.w0) << c.text;
    EXPECT_EQ(r.unit.offset, 0.0) << c.text;
    EXPECT_EQ(r.err, "") << c.text;
  }
}

// No unit here, with or without an error; the cursor has not moved.
TEST(UnitExpression, IsRefused) {
  const struct { const char *text, *err; } cases[] = {
      {" 5", ""}, {"x", ""}, {"(5)", ""}, {" ((5) m", ""}, {"+m", ""}, {"^2", ""}, {"M", ""},
      {"*5", ""}, {"* 5 m", ""}, {"/5", ""}, {"**5", ""}, {")", ""}, {"\r", ""}, {"\xb5m", ""},
      {"/", kIncomplete}, {" / \\\n ;m", kIncomplete}, {"/#", kIncomplete}, {"(/", kIncomplete},
      {" m^", kExponent}, {"m^ ;", kExponent}, {"m^x", kExponentOfM}, {" m^ m", kExponentOfM},
      {"m^()", kExponentOfM}, {"m^(2", kExponentOfM}, {"m^(2 + 1)", kExponentOfM},
      {"m^(", kExponentOfM}, {"m^inf", kExponentOfM}, {"m^-/2", kExponentOfM},
      {"m^*", "ERROR: Bad exponent for unit 'm' following '*'.\n"},
      {"m^/;", "ERROR: Bad exponent for unit 'm' following '/'.\n"},
      {"m^*x", "ERROR: Bad exponent for unit 'm'.\n"
               "ERROR: Bad exponent for unit 'm' following '*'.\n"},
      {"m^(/x", "ERROR: Bad exponent for unit 'm'.\n"
                "ERROR: Bad exponent for unit 'm' following '/'.\n"},
      {"m^/0", "ERROR: Divide by zero in exponent for unit 'm'.\n"},
      {"  meters ^ (2/0)", "ERROR: Divide by zero in exponent for unit 'meters'.\n"},
      {"m^*/0", "ERROR: Divide by zero in exponent for unit 'm'.\n"
                "ERROR: Bad exponent for unit 'm' following '*'.\n"},
  };
  for (const auto& c : cases) {
    const Read r = read(c.text);
    EXPECT_FALSE(r.ok) << c.text;
    EXPECT_EQ(r.rest, c.text);
    EXPECT_EQ(r.err, c.err) << c.text;
  }
}

// A unit was read, and what is behind it (or the parenthesis around it) is wrong.
TEST(UnitExpression, LeavesTheErrorOfALaterFactor) {
  const struct { const char *text, *rest, *err; } cases[] = {
      {"m s^x", " s^x", "ERROR: Bad exponent for unit 's'.\n"}, {"m * s^", " * s^", kExponent},
      {"kg/m^x", "/m^x", kExponentOfM}, {"(m", "(m", kParenthesis},
      {" (m + 3)", "(m + 3)", kParenthesis}, {"*(m;s)", "(m;s)", kParenthesis},
      {"m (s^x)", " (s^x)", "ERROR: Bad exponent for unit 's'.\n"},
      {"(m s^x)", "(m s^x)", "ERROR: Bad exponent for unit 's'.\n"}, {"m (/", " (/", kIncomplete},
      {"angstrom^4", "angstrom^4", kOverflow}, {"angstrom^3 nm", " nm", kOverflow},
      {"nm / lightyear^2", " / lightyear^2", kOverflow},
      {"/s lightyear^3 s", " lightyear^3 s", kOverflow},
      {"m / lightyear^30", " / lightyear^30", kOverflow}, {"% (m 5)", " (m 5)", kParenthesis},
  };
  for (const auto& c : cases) {
    const Read r = read(c.text);
    EXPECT_TRUE(r.ok) << c.text;
    EXPECT_EQ(r.rest, c.rest) << c.text;
    EXPECT_EQ(r.err, c.err) << c.text;
  }
  // A scale of zero is found before it divides anything.
  EXPECT_EQ(spelled(read("m / lightyear^30").unit.exps), "m^1");
}

TEST(UnitExpression, OffsetOfALoneTemperature) {
  const struct { const char* text; double offset; } cases[] = {
      {"degC", -273.15}, {"degF", -459.67}, {" * degC", -273.15}, {"((degC))", -273.15},
      {"degC^2", -273.15}, {"degF^-1", -459.67}, {"degC *", -273.15}, {"degC * 3", -273.15},
      {"degC / 3", -273.15}, {"degC + 3 degF", -273.15}, {"(/degC)", -273.15},
      {"degC\xb0", -273.15}, {"degC s", 0}, {"s degC", 0}, {"/degC", 0}, {"degC/", 0},
      {"degF/s", 0}, {"degC % ", 0}, {"degC degF", 0}, {"(degC)(s)", 0}, {"degK", 0}, {"degR", 0},
      {"degCdiff", 0}, {"degFdiff", 0},
  };
  for (const auto& c : cases) EXPECT_EQ(read(c.text).unit.offset, c.offset) << c.text;
}

// clang-format on

// Powers first, each then times the scale so far; a factor is finished before it is combined.
TEST(UnitExpression, OrderOfArithmetic) {
  const double ft = 3.28083989501312;
  const double hr = 0.000277777777778;
  const double lbf = 0.224808943099711;
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
