#include "quantity/unit_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>
#include <string>

#include "quantity/unit_expression.h"
#include "support/cases.h"

namespace quantiverse {
namespace {

constexpr UnitSystem kSystems[] = {UnitSystem::kMks, UnitSystem::kCgs, UnitSystem::kFps,
                                   UnitSystem::kIps};

std::string rendered(const Exponents& exps, UnitSystem system) {
  TextBuf text;
  render_units(text, exps, system);
  return text.release();
}

// The exponents of "0 -1", the rest being zero.
Exponents exponents(const std::string& text) {
  Exponents exps{};
  std::istringstream in(text);
  std::string field;
  for (std::size_t slot = 0; in >> field; ++slot) exps.at(slot) = number(field);
  return exps;
}

TEST(UnitText, FourSystems) {
  for (const Case& c : cases("quantity/unit_text.txt", "four systems", 5)) {
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(rendered(exponents(c[0]), kSystems[i]), c[i + 1]);
      TextBuf behind;
      behind.append_text("'");
      render_units(behind, exponents(c[0]), kSystems[i]);
      EXPECT_EQ(behind.text(), "'" + c[i + 1]);
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
  for (int round = 0; round < 2; ++round) {  // a dimension that is known by now, too
    for (const Case& c : cases("quantity/unit_text.txt", "exceptions", 2)) {
      EXPECT_EQ(output(exponents(c[0])), c[1]);
    }
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
