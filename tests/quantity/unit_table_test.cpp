#include "quantity/unit_table.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "quantity/unit_dictionary.h"
#include "quantity/unit_expression.h"
#include "text/scanner.h"

namespace quantiverse {
namespace {

std::set<std::string> all_names() {
  std::set<std::string> names;
  for (const UnitRow& row : unit_rows()) {
    for (const char* name : row.names) {
      if (name != nullptr) names.emplace(name);
    }
  }
  return names;
}

void expect_unknown(const std::string& text) {
  Cursor expptr{std::string_view(text)};
  DimValue record{true, {1, 1, 1}, {1}};
  EXPECT_FALSE(lookup_unit_name(UserUnits(), expptr, record)) << text;
  EXPECT_EQ(expptr.rest(), text);
  EXPECT_TRUE(dim_is_null(record)) << text;
}

TEST(UnitTable, HasItsSize) {
  EXPECT_EQ(unit_rows().size(), 153U);
  EXPECT_EQ(all_names().size(), 375U);  // no name stands twice
}

TEST(UnitTable, EveryNameFindsItsRow) {
  for (const UnitRow& row : unit_rows()) {
    for (const char* name : row.names) {
      if (name == nullptr) continue;
      const std::string text = std::string(name) + "-m";
      Cursor expptr{std::string_view(text)};
      DimValue record;
      EXPECT_TRUE(lookup_unit_name(UserUnits(), expptr, record)) << name;
      EXPECT_EQ(expptr.rest(), "-m");
      EXPECT_EQ(record.comp, (std::array<double, 3>{row.per_base, 0, 0})) << name;
      EXPECT_EQ(record.exps, row.dimension->exps) << name;
      EXPECT_FALSE(record.vector);
      EXPECT_TRUE(is_base_unit_name(UserUnits(), text));
    }
  }
}

TEST(UnitTable, NearMissesAreUnknown) {
  const std::set<std::string> names = all_names();
  // Well-known, but not in the table.
  for (const char* miss : {"", "_", "$", "K", "T", "litre", "Nm", "m_2", "celsius", "\xb5m"}) {
    expect_unknown(miss);
  }
  std::set<std::string> misses;
  for (const std::string& name : names) {
    std::string upper = name;
    std::string lower = name;
    std::string swapped = name;
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    swapped[0] = swapped[0] == upper[0] ? lower[0] : upper[0];
    misses.insert({upper, lower, swapped, name + "x", name + "2", name + "_", name + "_x",
                   name + "s", name.substr(0, name.size() - 1), name.substr(1)});
    if (name == "%") continue;  // may stand behind a name
    misses.insert({"_" + name, "2" + name, "x" + name, "k" + name, "m" + name});
  }
  std::size_t tried = 0;
  for (const std::string& miss : misses) {
    if (names.count(miss) != 0) continue;
    expect_unknown(miss);
    ++tried;
  }
  EXPECT_GT(tried, 3000U);
}

TEST(UnitTable, PluralsAreTheirSingulars) {
  const std::set<std::string> no_plurals = {"s", "ms", "fps", "rps", "Gauss", "gauss", "Tbs"};
  int plurals = 0;
  for (const std::string& name : all_names()) {
    if (name.back() != 's' || no_plurals.count(name) != 0) continue;
    const std::string stem = name.substr(0, name.size() - 1);
    const std::string stem_in_e = stem.substr(0, stem.size() - 1);
    const std::string stem_in_ie = stem_in_e.substr(0, stem_in_e.size() - 1) + "y";
    const UnitRow* singular = find_unit(stem);
    if (singular == nullptr) singular = find_unit(stem_in_e);
    if (singular == nullptr) singular = find_unit(stem_in_ie);
    EXPECT_EQ(find_unit(name), singular) << name;
    ++plurals;
  }
  EXPECT_GT(plurals, 100);
  EXPECT_EQ(find_unit("feet"), find_unit("foot"));
}

struct Relation {
  std::string unit;
  double factor;
  std::string other;
  double tolerance;
};

// "ft = 12 in within 5e-15"
std::vector<Relation> relations() {
  std::ifstream file(QV_SOURCE_DIR "/tests/golden/units/relations.txt");
  std::vector<Relation> rows;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    const std::size_t equals = line.find(" = ");
    const std::size_t within = line.find(" within ");
    std::size_t digits = 0;
    const double factor = std::stod(line.substr(equals + 3), &digits);
    const std::size_t other = equals + 3 + digits + 1;
    rows.push_back({line.substr(0, equals), factor, line.substr(other, within - other),
                    std::stod(line.substr(within + 8))});
  }
  return rows;
}

UnitDef read(std::string_view text) {
  Units units;
  Cursor expptr(text);
  UnitDef unit;
  TextBuf err;
  EXPECT_TRUE(parse_unit_expression(units, expptr, unit, err)) << text;
  EXPECT_TRUE(expptr.at_stop() && err.is_empty_text()) << text << ": " << err.text();
  return unit;
}

TEST(UnitTable, RelationsHold) {
  for (const Relation& relation : relations()) {
    const UnitDef unit = read(relation.unit);
    const UnitDef other = read(relation.other);
    EXPECT_EQ(unit.exps, other.exps) << relation.unit << " in " << relation.other;
    EXPECT_NEAR(other.w0 / unit.w0 / relation.factor, 1.0, relation.tolerance)
        << relation.unit << " in " << relation.other;
  }
}

TEST(UnitTable, RelationsNameEveryUnit) {
  std::set<const UnitRow*> named = {find_unit("%")};
  for (const Relation& relation : relations()) {
    for (const std::string_view text : {relation.unit, relation.other}) {
      for (Cursor expptr(text); !expptr.at_stop();) {
        const std::string_view name = scan_name(expptr);
        if (name.empty()) {
          expptr.step();
        } else {
          named.insert(find_unit(name));
        }
      }
    }
  }
  for (const UnitRow& row : unit_rows()) EXPECT_EQ(named.count(&row), 1U) << row.names[0];
}

// Two names of one hour, and of one league, that differ in their last digits.
TEST(UnitTable, TwinsKeepTheirDifference) {
  EXPECT_NE(find_unit("hour")->per_base, find_unit("hr")->per_base);
  EXPECT_NE(find_unit("league")->per_base, find_unit("Nmile")->per_base);
  EXPECT_NE(find_unit("fps")->per_base, find_unit("ft")->per_base);
}

// Which slot is which, from the base units up.
TEST(UnitTable, BaseUnits) {
  const char* const bases[] = {"rad", "s", "kg", "m", "degK", "mol", "degKdiff", "C"};
  for (std::size_t slot = 0; slot < kSlotCount; ++slot) {
    Exponents exps{};
    exps[slot] = 1.0;
    EXPECT_EQ(read(bases[slot]).exps, exps);
    EXPECT_EQ(read(bases[slot]).w0, 1.0);
  }
}

TEST(UnitTable, UserUnitsComeFirst) {
  UserUnits users;
  TextBuf err;
  users.store_user_unit("furlong", {true, {201.168, 5, 5}, find_unit("m")->dimension->exps}, err);
  users.store_user_unit("nothing", {false, {0}, {}}, err);
  EXPECT_EQ(err.text(), "ERROR: Cannot define a unit with value zero.\n");
  Cursor expptr{std::string_view(" \\\nfurlong*2")};  // only user units may stand behind blanks
  DimValue record;
  EXPECT_TRUE(lookup_unit_name(users, expptr, record));
  EXPECT_EQ(expptr.rest(), "*2");
  EXPECT_EQ(record.comp, (std::array<double, 3>{1.0 / 201.168, 0, 0}));
  EXPECT_TRUE(is_base_unit_name(users, "furlong"));
  for (const char* text : {"Furlong", "furlongs", "furlong_", " m", "nothing"}) {
    EXPECT_FALSE(is_base_unit_name(users, text)) << text;
  }
}

}  // namespace
}  // namespace quantiverse
