#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "calls.h"

namespace quantiverse::test {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

using Real = long double;
constexpr Real kPi = 3.14159265358979323846264338327950288L;

// What a formula loses beyond the last bits of its result, in units of epsilon: the error that
// its intermediate roundings leave.
double none(double) { return 0; }
double one(double) { return 1; }
double near_one(double x) { return 1 + std::fabs(x) / std::sqrt(x * x - 1); }
double arc_cosine(double x) { return near_one(x) + std::fabs(x); }
double below_zero(double x) { return x < 0 ? 1 + 2 * x * x : 1; }
double inverse_near_one(double x) { return near_one(1 / x); }
double inverse_below_zero(double x) { return below_zero(1 / x); }

struct Reference {
  const char* name;
  double from, to;
  Real (*exact)(Real);
  double (*loss)(double);
};

const Reference kReferences[] = {
    {"sin", -50, 50, [](Real x) { return std::sin(x); }, none},
    {"cos", -50, 50, [](Real x) { return std::cos(x); }, none},
    {"tan", -50, 50, [](Real x) { return std::tan(x); }, none},
    {"sec", -50, 50, [](Real x) { return 1 / std::cos(x); }, none},
    {"csc", -50, 50, [](Real x) { return 1 / std::sin(x); }, none},
    {"cot", -50, 50, [](Real x) { return 1 / std::tan(x); }, none},
    {"sinh", -20, 20, [](Real x) { return std::sinh(x); }, none},
    {"cosh", -20, 20, [](Real x) { return std::cosh(x); }, none},
    {"tanh", -20, 20, [](Real x) { return std::tanh(x); }, none},
    {"sech", -20, 20, [](Real x) { return 1 / std::cosh(x); }, none},
    {"csch", -20, 20, [](Real x) { return 1 / std::sinh(x); }, none},
    {"coth", -20, 20, [](Real x) { return 1 / std::tanh(x); }, none},
    {"asin", -1, 1, [](Real x) { return std::asin(x); }, none},
    {"acos", -1, 1, [](Real x) { return std::acos(x); }, none},
    {"atan", -50, 50, [](Real x) { return std::atan(x); }, none},
    {"acot", -50, 50, [](Real x) { return std::atan(1 / x); }, one},
    {"asec", 1.001, 50, [](Real x) { return std::acos(1 / x); }, near_one},
    {"asec", -50, -1.001, [](Real x) { return std::acos(1 / x); }, near_one},
    {"acsc", 1.001, 50, [](Real x) { return std::asin(1 / x); }, arc_cosine},
    {"acsc", -50, -1.001, [](Real x) { return -kPi - std::asin(1 / x); }, arc_cosine},
    {"asinh", -50, 50, [](Real x) { return std::asinh(x); }, below_zero},
    {"acosh", 1.001, 50, [](Real x) { return std::acosh(x); }, near_one},
    {"atanh", -0.999, 0.999, [](Real x) { return std::atanh(x); }, one},
    {"asech", 0.001, 0.999, [](Real x) { return std::acosh(1 / x); }, inverse_near_one},
    {"acsch", 0.01, 50, [](Real x) { return std::asinh(1 / x); }, one},
    {"acsch", -50, -0.02, [](Real x) { return std::asinh(1 / x); }, inverse_below_zero},
    {"acoth", 1.001, 50, [](Real x) { return std::atanh(1 / x); }, one},
    {"acoth", -50, -1.001, [](Real x) { return std::atanh(1 / x); }, one},
    {"exp", -700, 700, [](Real x) { return std::exp(x); }, none},
    {"ln", 0.001, 1000, [](Real x) { return std::log(x); }, none},
    {"log", 1e-300, 1e300, [](Real x) { return std::log(x); }, none},
    {"log10", 0.001, 1000, [](Real x) { return std::log10(x); }, none},
    {"sqrt", 0, 1e6, [](Real x) { return std::sqrt(x); }, none},
};

TEST(Elementary, AgreesWithALongerArithmetic) {
  constexpr int kSteps = 999;
  for (const Reference& r : kReferences) {
    for (int i = 0; i <= kSteps; ++i) {
      const double x = r.from + (r.to - r.from) * i / kSteps;
      const Real exact = r.exact(x);
      const Real allowed = 3 * kEpsilon * (std::fabs(exact) + Real{r.loss(x)});
      ASSERT_LE(std::fabs(number(r.name, {scalar(x)}) - exact), allowed) << r.name << " of " << x;
    }
  }
}

// Name, argument, result. Among them: acsc of a negative argument, asinh where its formula has
// lost every digit, atanh below its unchecked side, and a half that is added once too often.
TEST(Elementary, AtTheEdgesOfTheDomain) {
  const std::vector<std::string> w = words(R"(
    asin 1.0000000000000002 inf   asin -1.1 inf   asin nan inf   acos -1.0000000000000002 inf
    acos 2 inf   acos 1 0   asec 0.9 inf   asec -0.9 inf   asec 1 0   asec nan inf
    acsc 0.5 inf   acsc -0.9 inf   acsc -2 -2.6179938779914944   acot 0 1.5707963267948966
    acot -0.0 1.5707963267948966   acot -1e-300 -1.5707963267948966   csc 0 inf   cot 0 inf
    csch 0 inf   coth -0.0 inf   sech 1000 0   csch -1000 -0.0   ln 0 inf   log -1 inf
    log10 -0.0 inf   ln nan nan   log 100 4.605170185988092   log10 1000 3   exp 1000 inf
    exp -1000 0   exp -inf 0   asinh -1e9 -inf   acosh 1 0   acosh nan nan   atanh 1 inf
    atanh -1 -inf   atanh -2 nan   asech 0 inf   asech 1 0   acsch 0 inf   acsch -0.0 nan
    acoth 1 inf   acoth -1 -inf   sqrt 0 0   sqrt -0.0 0   floor -2.5 -3   floor -inf -inf
    ceil -2.5 -2   ceil 2.5 3   int -2.5 -2   int 2.9 2   int -1e300 -1e300   int -0.5 -0.0
    round 2.5 3   round -2.5 -3   round 2.4 2   round -0.4 0   round 0.49999999999999994 1
    round 2147483647.4 2147483647   round 2147483647.5 -2147483648   round 3e9 -2147483648
    round -2147483648.4 -2147483648   round nan -2147483648   abs nan nan   abs -inf inf
    abs -0.0 0   sign nan 0   sign -0.0 0)");
  for (std::size_t i = 0; i + 2 < w.size(); i += 3) {
    const double result = number(w[i], {scalar(std::stod(w[i + 1]))});
    EXPECT_PRED2(same_bits, result, std::stod(w[i + 2])) << w[i] << " of " << w[i + 1];
  }
}

enum Result { kPlain, kAngle, kKept };  // what dimension it has
const std::pair<Result, const char*> kFamilies[] = {
    {kPlain,
     "sin cos tan sec csc cot sinh cosh tanh sech csch coth asinh acosh atanh asech acsch acoth "
     "exp ln log log10"},
    {kAngle, "asin acos atan acot asec acsc"},
    {kKept, "floor ceil int round"},
};

// Infinity is the mark of a result that failed: it gives 0 whatever the function would do.
TEST(Elementary, DimensionsAndInfinity) {
  Exponents plain = slot(kSlotAngle, 2);
  plain[kSlotAmount] = -1;
  for (const auto& [result, names] : kFamilies) {
    for (const std::string& name : words(names)) {
      const std::string computing = "ERROR:  Computing " + name;
      EXPECT_EQ(answer(name + "([1,2,3] m)"), computing + "() of a vector.");
      EXPECT_EQ(answer(name + "(-7 degKdiff)"), computing + "() of a dimensional number.");
      EXPECT_TRUE(same_value(call(name, {vec(1, 2, 3)}).value, {})) << name;
      const Exponents exps = result == kKept    ? plain
                             : result == kAngle ? slot(kSlotAngle)
                                                : Exponents{};
      EXPECT_EQ(call(name, {scalar(1, plain)}).value.exps, exps) << name;
      if (name == "atanh" || name == "asech") continue;  // infinity is out of their domain
      const DimValue infinite = scalar(result == kKept ? kInf : 0, exps);
      const Called called = call(name, {scalar(kInf, plain)});
      EXPECT_TRUE(called.err.empty() && same_value(called.value, infinite)) << name;
    }
  }
}

TEST(Elementary, Lines) {
  expect_answers(R"(
    acosh(0.9)               | ERROR:  Arg to acosh() must be greater than one.
    atanh(1.1)               | ERROR:  Arg of atanh() must be less than one.
    asech(-0.1)              | ERROR:  ARg to asech() must be between zero and one.
    asech(1e999)             | ERROR:  ARg to asech() must be between zero and one.
    acoth(-0.9)              | ERROR:  Arg of acoth() must be greater than one.
    SIN([1])                 | ERROR:  Computing sin() of a vector.
    asin(2)                  |  = inf rad
    asin(1e999)              |  = 0 rad
    sqrt(9 m)                |  = 3 m^0.5
    sqrt(1e999)              |  = 0
    sqrt(-1 m)               | ERROR:  sqrt() of a negative value.
    sqrt([4])                | ERROR:  Computing sqrt() of a vector.
    atan2(1 m, 1 ft)         |  = 1.27494 rad
    atan2(0, -5 m)           |  = 3.14159 rad
    atan2(1e999, 1)          |  = 1.5708 rad
    atan2(1 m, 1 s)          | ERROR:  Computing atan2() of a dimensional number.
    atan2(1 m, [1])          | ERROR:  Computing atan2() of a vector.
  )");
  const Called root = call("sqrt", {scalar(kNan)});
  EXPECT_EQ(root.err, "ERROR:  sqrt() of a negative value.\n");
  EXPECT_TRUE(same_value(root.value, overflow_value()));
}

}  // namespace
}  // namespace quantiverse::test
