#include "quantity/unit_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "quantity/unit_expression.h"

namespace quantiverse {
namespace {

constexpr UnitSystem kSystems[] = {UnitSystem::kMks, UnitSystem::kCgs, UnitSystem::kFps,
                                   UnitSystem::kIps};

std::string rendered(const Exponents& exps, UnitSystem system) {
  TextBuf text;
  render_units(text, exps, system);
  return text.release();
}

TEST(UnitText, FourSystems) {
  // Exponents of angle, time, mass, length, temperature, amount, difference, charge.
  // clang-format off
  const struct { Exponents exps; const char* text[4]; } cases[] = {
      {{}, {"", "", "", ""}}, {{1}, {"rad", "rad", "rad", "rad"}},
      {{0, -1}, {"/ s", "/ s", "/ s", "/ s"}},
      {{0, 0, 1}, {"kg", "g", "lbf s^2 / ft", "lbf s^2 / in"}},
      {{0, -2, 1, 1}, {"kg m / s^2", "g cm / s^2", "lbf", "lbf"}},
      {{0, -2, 1, -1}, {"kg / m s^2", "g / cm s^2", "lbf / ft^2", "lbf / in^2"}},
      {{0, -1, 0, 1}, {"m / s", "cm / s", "ft / s", "in / s"}},
      {{0, -0.5, 0, 0.5}, {"m^0.5 / s^0.5", "cm^0.5 / s^0.5", "ft^0.5 / s^0.5", "in^0.5 / s^0.5"}},
      {{0, 0, 0, 0, 0, 0, 1}, {"degKdiff", "degK", "degR", "degF"}},
      {{0, 0, 0, 0, 2, 0, 3},
       {"degK^2 degKdiff^3", "degK^2 degK^3", "degR^2 degR^3", "degR^2 degF^3"}},
      {{0, -2, 1, 2, -1},
       {"kg m^2 / s^2 degK", "g cm^2 / s^2 degK", "lbf ft / degR", "lbf in / degR"}},
      {{1, 1, 1, 1, 1, 1, 1, 1}, {"kg m rad s degK mol degKdiff C", "g cm rad s degK mol degK C",
                                  "lbf rad s^3 degR mol degR C", "lbf rad s^3 degR mol degF C"}},
      {{-1, -1, -1, -1, -1, -1, -1, -1},
       {"/ kg m rad s degK mol degKdiff C", "/ g cm rad s degK mol degK C",
        "/ lbf rad s^3 degR mol degR C", "/ lbf rad s^3 degR mol degF C"}},
      // How an exponent is written: "%d" while it is whole and fits, "%g" otherwise.
      {{0, 1 / 3.0}, {"s^0.333333", "s^0.333333", "s^0.333333", "s^0.333333"}},
      {{0, 2147483647}, {"s^2147483647", "s^2147483647", "s^2147483647", "s^2147483647"}},
      {{0, -3e9}, {"/ s^3e+09", "/ s^3e+09", "/ s^3e+09", "/ s^3e+09"}},
      {{0, 1.0000001}, {"s^1", "s^1", "s^1", "s^1"}},
      {{0, 1e-300}, {"s^1e-300", "s^1e-300", "s^1e-300", "s^1e-300"}},
  };
  // clang-format on
  for (const auto& c : cases) {
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(rendered(c.exps, kSystems[i]), c.text[i]);
      TextBuf behind;
      behind.append_text("'");
      render_units(behind, c.exps, kSystems[i]);
      EXPECT_EQ(behind.text(), "'" + std::string(c.text[i]));
    }
  }
}

// What is rendered reads back whole, with the same exponents and the scale of the system. Only
// MKS has a name for a difference of temperature; elsewhere it comes back as a temperature.
TEST(UnitText, ReadsBack) {
  std::mt19937 random(3);
  for (int round = 0; round < 5000; ++round) {
    Exponents exps{};
    for (double& e : exps) {
      if (random() % 2 == 0)
        e = (static_cast<int>(random() % 17) - 8) / (random() % 2 == 0 ? 2.0 : 4.0);
    }
    for (const UnitSystem system : kSystems) {
      const std::string text = rendered(exps, system);
      Units units;
      Cursor expptr{std::string_view(text)};
      UnitDef unit;
      TextBuf err;
      ASSERT_TRUE(parse_unit_expression(units, expptr, unit, err)) << text;
      ASSERT_TRUE(expptr.at_stop() && err.is_empty_text()) << text;
      Exponents expected = exps;
      const double difference = exps[kSlotDifference];
      double scale = 1.0;
      if (system != UnitSystem::kMks) {
        expected[kSlotTemperature] += difference;
        expected[kSlotDifference] = 0.0;
        scale = std::pow(1000.0, exps[kSlotMass]) * std::pow(100.0, exps[kSlotLength]);
      }
      if (system == UnitSystem::kFps || system == UnitSystem::kIps) {
        const double length = system == UnitSystem::kFps ? 3.28083989501312 : 39.3700787401575;
        scale = std::pow(0.224808943099711 / length, exps[kSlotMass]) *
                std::pow(length, exps[kSlotLength]) * std::pow(1.8, expected[kSlotTemperature]);
      }
      ASSERT_EQ(unit.exps, expected) << text;
      ASSERT_NEAR(unit.w0 / scale, 1.0, 1e-12) << text;
    }
  }
}

class Exceptions : public testing::Test {
 protected:
  void use(std::vector<std::string_view> list) {
    units_.systems.replace_exceptions(std::move(list));
  }
  std::string output(const Exponents& exps) {
    TextBuf text;
    render_units_with_exceptions(text, exps, units_);
    return text.release();
  }
  std::string message(const Exponents& exps) {
    TextBuf text;
    render_dimension_text(text, exps, units_);
    return text.release();
  }
  Units units_;
};

TEST_F(Exceptions, TheFirstOfExactlyTheDimensionWins) {
  use({" kN ", "lbf", "nosuch", "mm", "rad m", "degC", "mol", "rev/s"});
  const struct {
    Exponents exps;
    const char* text;
  } cases[] = {{{0, -2, 1, 1}, " kN "},
               {{0, -1, 1, 1}, "kg m / s"},
               {{0, 0, 0, 1}, "mm"},
               {{0, 0, 0, 1 + 0.9e-5}, "mm"},
               {{0, 0, 0, 1 + 1.1e-5}, "m^1.00001"},
               {{1, 0, 0, 1}, "rad m"},  // angle and amount count here
               {{0, 0, 0, 1, 0, 1}, "m mol"},
               {{0, 0, 0, 0, 1}, "degC"},
               {{0, 0, 0, 0, 0, 0, 1}, "degKdiff"},  // and the two temperatures are two
               {{1, -1}, "rev/s"},
               {{}, ""}};
  for (int round = 0; round < 2; ++round) {  // a dimension that is known by now, too
    for (const auto& c : cases) EXPECT_EQ(output(c.exps), c.text);
  }
  EXPECT_EQ(message({}), "Dimensionless");
  EXPECT_EQ(message({1}), "rad");
  EXPECT_EQ(message({0, 0, 0, 1}), "mm");
}

TEST_F(Exceptions, CanBeDimensionless) {
  EXPECT_EQ(message({}), "Dimensionless");
  use({"%"});
  EXPECT_EQ(output({}), "%");
  EXPECT_EQ(message({}), "%");
  EXPECT_EQ(output({1e-6}), "%");  // within the tolerance
}

// A choice that was made once doesn't outlive what it was made from.
TEST_F(Exceptions, FollowListSystemAndUserUnits) {
  const Exponents length = {0, 0, 0, 1};
  EXPECT_EQ(output(length), "m");
  use({"furlong", "km"});
  EXPECT_EQ(output(length), "km");
  TextBuf err;
  units_.users.store_user_unit("furlong", {false, {201.168}, length}, err);
  EXPECT_EQ(output(length), "furlong");
  units_.users.store_user_unit("furlong", {false, {5}, {0, 1}}, err);
  EXPECT_EQ(output(length), "km");
  use({"mm"});
  EXPECT_EQ(output(length), "mm");
  units_.systems.set_unit_system(UnitSystem::kIps);
  EXPECT_EQ(output(length), "mm");
  use({});
  EXPECT_EQ(output(length), "in");
  units_.systems.set_unit_system(UnitSystem::kCgs);
  EXPECT_EQ(output(length), "cm");
}

}  // namespace
}  // namespace quantiverse
