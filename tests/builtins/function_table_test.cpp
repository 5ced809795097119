#include "builtins/function_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <set>

#include "calls.h"
#include "text/scanner.h"

namespace quantiverse::test {
namespace {

// Every function, under the number of arguments that it takes.
const std::map<int, std::string> kNames = {
    {0, "Boltzmann CLight euler gas GEarth grav pi Planck StefanBoltzmann"},
    {1,
     "abs acos acosh acot acoth acsc acsch AiryAi AiryBi asec asech asin asinh atan atanh ceil "
     "cos cosh cot coth csc csch DawsonIntegral Erf Erfc exp ExpInt ExpIntEi floor GammaFunc int "
     "ln log log10 LogGammaFunc mag Normsdist Normsinv Number PolarAngle round sec sech sign sin "
     "sinh sqrt tan tanh"},
    {2,
     "angle atan2 BesselI BesselJ BesselK BesselY BetaFunc CarlsonRC component cross dot "
     "EllipticE EllipticF ExpIntN GammaPFunc GammaQFunc JacobiCN JacobiDN JacobiSN mod PolarVec"},
    {3, "CarlsonRD CarlsonRF EllipticPi IncBetaFunc"},
    {4, "CarlsonRJ"},
    {5, "lininterp"},
};
const std::string kRequests = "fmax fmin func solve";
// Names that go by another one when their arguments are counted.
const std::map<std::string, std::string> kAliases = {{"ExpIntEi", "ExpInt"},
                                                     {"StefanBoltzmann", "Boltzmann"},
                                                     {"euler", "pi"},
                                                     {"lininterp", "LinInterp"}};

std::vector<std::string> all_names() {
  std::string all = kRequests;
  for (const auto& [count, names] : kNames) all += " " + names;
  return words(all);
}

std::string folded(std::string name, char (*fold)(char)) {
  std::transform(name.begin(), name.end(), name.begin(), fold);
  return name;
}
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
char swap_case(char c) { return upper(c) == c ? fold_case(c) : upper(c); }

TEST(FunctionTable, FindsNamesInAnyCaseAndNothingElse) {
  const std::vector<std::string> names = all_names();
  std::set<std::string> known;
  for (const std::string& name : names) known.insert(folded(name, fold_case));
  std::map<int, std::string> numbered;
  const auto expect_unknown = [&](const std::string& name) {
    const bool is_name = known.contains(folded(name, fold_case));
    EXPECT_TRUE(is_name || lookup_function_name(name).number == 0) << name;
  };
  for (const std::string& name : names) {
    const int number = lookup_function_name(name).number;
    numbered.emplace(number, folded(name, fold_case));
    for (const auto fold : {fold_case, upper, swap_case}) {
      EXPECT_EQ(lookup_function_name(folded(name, fold)).number, number) << name;
    }
    EXPECT_EQ(answer(name + " = 1"),
              "ERROR: Variable name '" + name + "' matches a " +
                  (name == "sec" ? "base unit." : "pre-programmed function."));
    for (std::size_t i = 0; i < name.size(); ++i) {
      expect_unknown(std::string(name).erase(i, 1));
      expect_unknown(std::string(name).insert(i, 1, 'x'));
      std::string near = name;
      near[i] = static_cast<char>(near[i] ^ 0x40);  // what careless folding would take for it
      expect_unknown(near);
    }
    for (const char* tail : {"h", "2", "_", " ", "("}) expect_unknown(name + tail);
  }
  expect_unknown("");
  // The alphabet, with the inverse hyperbolic functions behind it.
  ASSERT_TRUE(numbered.size() == 89 && numbered.begin()->first == 1 && numbered.contains(89));
  for (int i = 2; i <= 83; ++i) EXPECT_LT(numbered[i - 1], numbered[i]);
  std::string rest;
  for (int i = 84; i <= 89; ++i) rest += numbered[i] + " ";
  EXPECT_EQ(rest, "asinh acosh atanh asech acsch acoth ");
}

TEST(FunctionTable, WrongCountsAreReported) {
  for (const auto& [expected, names] : kNames) {
    for (const std::string& name : words(names)) {
      const auto alias = kAliases.find(name);
      const std::string message =
          "ERROR:  Function " + (alias == kAliases.end() ? name : alias->second) + " takes " +
          std::to_string(expected) + (expected == 1 ? "argument." : "arguments.");
      std::string list = "0";
      for (int given = 0; given <= expected + 2; ++given) {
        // Vectors, which most functions refuse: the count comes first.
        const std::vector<DimValue> arguments(static_cast<std::size_t>(given), vec(1, 2, 3));
        const Called called = call(name, arguments);
        EXPECT_EQ(called.err == message + "\n", given != expected) << name << " " << given;
        EXPECT_TRUE(given == expected || same_value(called.value, {})) << name;
        if (given != 0) list += ",0";
      }
      // `Number` has a parser of its own.
      if (name == "Number") continue;
      EXPECT_EQ(answer("-" + name + "(" + list + ")"), message);
    }
  }
}

TEST(FunctionTable, TheRequestsTakeNames) {
  for (const std::string& name : all_names()) {
    const bool is_request = kRequests.find(name) != std::string::npos;
    const int kind = name == "func" ? FunctionSet::kVariablesAndValues
                     : is_request   ? FunctionSet::kVariables
                                    : FunctionSet::kValues;
    EXPECT_EQ(lookup_function_name(name).kind, kind) << name;
  }
}

}  // namespace
}  // namespace quantiverse::test
