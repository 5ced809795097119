#include "quantity/unit_systems.h"

#include <gtest/gtest.h>

#include <string>

#include "quantity/units.h"

namespace quantiverse {
namespace {

constexpr const char* kNoUnit = " Argument not a proper unit";
constexpr const char* kOpen = " Argument list not terminated";
using List = std::vector<std::string_view>;

TEST(DefaultUnitList, IsRead) {
  // clang-format off
  const struct { const char* text; List list; const char* rest; } cases[] = {
      {"(kN)", {"kN"}, ""}, {" \\\n (kN, mm)x", {"kN", " mm"}, "x"}, {"(kN,mm,)", {"kN", "mm"}, ""},
      {"( kN )", {"kN"}, ""}, {"( \\\n kN)", {"kN"}, ""}, {"(,,kN,,)", {"kN"}, ""},
      {"(kN,\\\n \tmm)", {"kN", "\\\n \tmm"}, ""},
      {"(N*m, kg m/s ,(m/s) (s))", {"N*m", " kg m/s", "(m/s) (s)"}, ""},
      // Blanks that an empty factor took in belong to the text; a factor given up half-way starts
      // an item of its own, from the same comma.
      {"(m * * )", {"m * * "}, ""},
      {"(s, angstrom^3 angstrom^3)", {"s", " angstrom^3", " angstrom^3 angstrom^3"}, ""},
      // Nothing to put in force: the list stays.
      {"", {"old"}, ""}, {"  x", {"old"}, "x"}, {" ; (m)", {"old"}, "; (m)"}, {"()", {"old"}, ""},
      {"( , ,)x", {"old"}, "x"}, {"\n(m)", {"old"}, "\n(m)"},
  };
  // clang-format on
  for (const auto& c : cases) {
    Units units;
    units.systems.replace_exceptions({"old"});
    Cursor expptr{std::string_view(c.text)};
    TextBuf err;
    err.append_text("left over");
    read_default_unit_list(units, expptr, err);
    EXPECT_EQ(err.text(), "") << c.text;
    EXPECT_EQ(units.systems.exceptions(), c.list) << c.text;
    EXPECT_EQ(expptr.rest(), c.rest) << c.text;
  }
}

TEST(DefaultUnitList, AnErrorLeavesTheListAsItWas) {
  // clang-format off
  const struct { const char* text; std::string err; } cases[] = {
      {"(", kOpen}, {"(m", kOpen}, {"(m\n)", kOpen}, {"(m, # s)", kOpen}, {"(m,", kOpen},
      {"(foo)", kNoUnit}, {"(m foo)", kNoUnit}, {"(m, 5)", kNoUnit}, {"(m;s)", kNoUnit},
      {"(;", kNoUnit}, {"((m", std::string("ERROR:  Bad parenthesis.\n") + kNoUnit},
      {"(m, (s)", kOpen},
      {"(angstrom^4)", std::string("ERROR:  Numerical over or underflow.\n") + kNoUnit},
      {"(m s^x)", std::string("ERROR: Bad exponent for unit 's'.\n") + kNoUnit},
      {"(/", std::string("ERROR: Math expression incomplete.\n") + kNoUnit},
  };
  // clang-format on
  for (const auto& c : cases) {
    Units units;
    units.systems.replace_exceptions({"old"});
    Cursor expptr{std::string_view(c.text)};
    TextBuf err;
    read_default_unit_list(units, expptr, err);
    EXPECT_EQ(err.text(), c.err) << c.text;
    EXPECT_EQ(units.systems.exceptions(), List{"old"}) << c.text;
  }
}

}  // namespace
}  // namespace quantiverse
