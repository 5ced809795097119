#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "calls.h"

namespace quantiverse::test {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
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
    acoth 1 inf   acoth -1 -inf   sqrt 0 0   sqrt 2 1.4142135623730951   sqrt -0.0 0   floor -2.5 -3   floor -inf -inf
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

TEST(Elementary, TheRootOfNanIsTheMarkOfOverflow) {
  const Called root = call("sqrt", {scalar(kNan)});
  EXPECT_EQ(root.err, "ERROR:  sqrt() of a negative value.\n");
  EXPECT_TRUE(same_value(root.value, overflow_value()));
}

}  // namespace
}  // namespace quantiverse::test
