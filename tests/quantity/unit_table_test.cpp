#include "quantity/unit_table.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <set>
#include <string>

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
  // Regular-looking or well-known, but not in the table.
  for (const char* miss :
       {"",   "_",      "$",          "Mm",    "kV",     "ns",      "pF",   "K",   "S",
        "M",  "T",      "Kg",         "KG",    "pa",     "ev",      "hZ",   "Kn",  "OE",
        "kn", "pascal", "centimetre", "metre", "litre",  "G",       "h",    "Nm",  "sr",
        "cd", "lm",     "m2",         "m_2",   "NEWTON", "celsius", "psia", "kWh", "\xb5m"}) {
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
  const char* unit;
  double factor;
  const char* other;
  double tolerance;  // how well the table's digits hold it
};

constexpr double kExact = 5e-15;  // all 15 digits
constexpr double kHour = 1e-12;   // the units of time have 13
constexpr double kNine = 1e-8;
constexpr double kSix = 4e-6;

// 1 unit is so many of the other. Between them the rows name every unit of the table.
// clang-format off
constexpr Relation kRelations[] = {
    // Ratios and angles.
    {"%", 0.01, "rad/rad", kExact}, {"rev", 6.283185307179586, "rad", kExact},
    {"rev", 360, "deg", kExact}, {"deg", 60, "arcmin", kExact}, {"arcmin", 60, "arcsec", kExact},
    {"rps", 1, "rev/s", kExact}, {"rpm", 1, "rev/min", kHour}, {"rps", 60, "rpm", kExact},
    // Lengths. A nautical mile is three times what it should be.
    {"lightyear", 299792458 * 365.25, "day m/s", 2e-5}, {"NauticalMile", 3 * 1852, "m", kNine},
    {"league", 3 * 1852, "m", kExact}, {"mi", 5280, "ft", kExact}, {"yd", 3, "ft", kExact},
    {"fathom", 6, "ft", kExact}, {"cubit", 18, "in", kSix}, {"ft", 12, "in", kExact},
    {"in", 2.54, "cm", kExact}, {"in", 1000, "mil", kExact}, {"km", 1000, "m", kExact},
    {"m", 100, "cm", kExact}, {"cm", 10, "mm", kExact}, {"mm", 1000, "um", kExact},
    {"um", 1000, "nm", kExact}, {"nm", 10, "angstrom", kExact},
    {"m", 1650763.73, "KrWavelength", kExact},
    // Areas and volumes.
    {"hectare", 1e4, "m^2", kExact}, {"acre", 43560, "ft^2", kExact},
    {"D", 1, "cp cm^2/s atm", kSix}, {"D", 1000, "mD", kExact}, {"cord", 128, "ft^3", 2e-8},
    {"stere", 1, "m^3", kExact}, {"barrel", 42, "gal", 3e-8}, {"bushel", 4, "peck", kExact},
    {"peck", 8.80976754172, "L", kExact}, {"gal", 231, "in^3", 5e-9}, {"gal", 4, "quart", 2e-12},
    {"boardfoot", 144, "in^3", kExact}, {"quart", 2, "pint", 5e-9}, {"pint", 2, "cup", kExact},
    {"cup", 8, "fluidounce", kExact}, {"fluidounce", 2, "Tablespoon", kExact},
    {"Tablespoon", 3, "teaspoon", kExact}, {"m^3", 1000, "L", kExact}, {"L", 1000, "ml", kExact},
    // Masses and concentrations. A ton is the long one.
    {"ton", 2240, "lbm", kExact}, {"Mg", 1000, "kg", kExact}, {"slug", 1, "lbf s^2/ft", kNine},
    {"stone", 14, "lbm", kExact}, {"lbm", 0.45359237, "kg", kExact}, {"lbm", 16, "ozm", kExact},
    {"lbm", 7000, "grain", kExact}, {"kg", 1000, "g", kExact}, {"g", 5, "carat", kExact},
    {"g", 1000, "mg", kExact}, {"mg", 1000, "ug", kExact}, {"ug", 1000, "ng", kExact},
    {"ppm", 1, "mg/L", kExact}, {"ppb", 1, "ug/L", kExact}, {"ppt", 1, "ng/L", kExact},
    // Times and frequencies. The curie stands upside down.
    {"year", 365.2422, "day", 2e-8}, {"week", 7, "day", kNine}, {"day", 24, "hr", kHour},
    {"hr", 60, "min", kHour}, {"hour", 3600, "s", kExact * 20}, {"hr", 3600, "s", kHour},
    {"min", 60, "s", kHour}, {"s", 1000, "ms", kExact}, {"Hz", 1, "s^-1", kExact},
    {"GHz", 1000, "MHz", kExact}, {"MHz", 1000, "kHz", kExact}, {"kHz", 1000, "Hz", kExact},
    {"Curie", 1 / 3.7e10, "Bq", kExact}, {"knot", 1852, "m/hr", kHour}, {"mph", 1, "mi/hr", kHour},
    {"kph", 1, "km/hr", kHour}, {"fps", 1, "ft/s", kHour * 5}, {"fpm", 1, "ft/min", kHour * 5},
    // Forces and pressures. A pound and an ounce are forces; columns of mercury are warm.
    {"MN", 1000, "kN", kExact}, {"kN", 1000, "N", kExact}, {"N", 1, "kg m/s^2", kExact},
    {"N", 1e5, "dyne", kExact}, {"dyne", 1, "g cm/s^2", kExact}, {"kip", 1000, "lbf", kExact},
    {"lbf", 4.4482216152605, "N", kExact}, {"lbf", 16, "oz", kNine}, {"kgf", 9.80665, "N", 3e-7},
    {"Pa", 1, "N/m^2", kExact}, {"bar", 100, "kPa", kExact}, {"GPa", 1000, "MPa", kExact},
    {"MPa", 1000, "kPa", kExact}, {"kPa", 1000, "Pa", kExact}, {"Pa", 1000, "mPa", kExact},
    {"bar", 1000, "millibar", kExact}, {"atm", 101325, "Pa", kExact}, {"psi", 1, "lbf/in^2", 2e-8},
    {"psf", 1, "lbf/ft^2", 2e-8}, {"ksi", 1000, "psi", kExact}, {"Mpsi", 1000, "ksi", kExact},
    {"Gpsi", 1000, "Mpsi", kExact}, {"atm", 760, "mmHg", 3e-7}, {"cmHg", 10, "mmHg", kExact},
    {"inHg", 3376.85, "Pa", kSix}, {"inWater", 248.84, "Pa", kSix},
    {"cmWater", 98.0638, "Pa", kExact},
    // Energies and powers.
    {"J", 1, "N m", kExact}, {"GJ", 1000, "MJ", kExact}, {"MJ", 1000, "kJ", kExact},
    {"kJ", 1000, "J", kExact}, {"J", 1000, "mJ", kExact}, {"erg", 1, "dyne cm", kExact},
    {"kcal", 1000, "cal", kExact}, {"cal", 4.1868, "J", kNine},
    {"BTU", 1, "cal lbm degR/g degK", 5e-8}, {"eV", 1.60217733e-19, "J", 3e-8},
    {"W", 1, "J/s", kExact}, {"GW", 1000, "MW", kExact}, {"MW", 1000, "kW", kExact},
    {"kW", 1000, "W", kExact}, {"W", 1000, "mW", kExact}, {"hp", 550, "ft lbf/s", kNine},
    {"hp", 745.69987158227, "W", kNine},
    // Viscosities. A stoke isn't a hundred centistokes.
    {"poise", 1, "dyne s/cm^2", kExact}, {"poiseuille", 10, "poise", kExact},
    {"poise", 100, "centipoise", kExact}, {"poise", 1000, "millipoise", kExact},
    {"reyn", 1, "psi s", 3e-7}, {"centistoke", 1, "mm^2/s", kExact},
    {"stoke", 0.1, "m^2/s", kExact},
    // Temperatures and amounts.
    {"degK", 1.8, "degR", kExact}, {"m degC", 1.8, "m degF", kExact},
    {"m degK", 1, "m degC", kExact}, {"degKdiff", 1.8, "degRdiff", kExact},
    {"degCdiff", 1.8, "degFdiff", kExact}, {"kmol", 1000, "mol", kExact},
    // Electricity and magnetism.
    {"A", 1, "C/s", kExact}, {"A", 1000, "mA", kExact}, {"mA", 1000, "microamp", kExact},
    {"V", 1, "J/C", kExact}, {"V", 1000, "mV", kExact}, {"mV", 1000, "microvolt", kExact},
    {"Ohm", 1, "V/A", kExact}, {"F", 1, "C/V", kExact}, {"F", 1000, "mF", kExact},
    {"mF", 1000, "microfarad", kExact}, {"microfarad", 1000, "nanofarad", kExact},
    {"H", 1, "V s/A", kExact}, {"H F", 1, "s^2", kExact}, {"Wb", 1, "V s", kExact},
    {"Wb", 1e8, "Maxwell", kExact}, {"Tesla", 1, "Wb/m^2", kExact}, {"Tesla", 1000, "mT", kExact},
    {"Gauss", 1, "Maxwell/cm^2", kExact}, {"W", 1, "A^2 Ohm", kExact},
    {"Oe", 1000 / (4 * 3.14159265358979), "A/m", 1e-13},
};
// clang-format on

UnitDef read(const char* text) {
  Units units;
  Cursor expptr{std::string_view(text)};
  UnitDef unit;
  TextBuf err;
  EXPECT_TRUE(parse_unit_expression(units, expptr, unit, err)) << text;
  EXPECT_TRUE(expptr.at_stop() && err.is_empty_text()) << text << ": " << err.text();
  return unit;
}

TEST(UnitTable, RelationsHold) {
  for (const Relation& relation : kRelations) {
    const UnitDef unit = read(relation.unit);
    const UnitDef other = read(relation.other);
    EXPECT_EQ(unit.exps, other.exps) << relation.unit << " in " << relation.other;
    EXPECT_NEAR(other.w0 / unit.w0 / relation.factor, 1.0, relation.tolerance)
        << relation.unit << " in " << relation.other;
  }
}

TEST(UnitTable, RelationsNameEveryUnit) {
  std::set<const UnitRow*> named = {find_unit("%")};
  for (const Relation& relation : kRelations) {
    for (const char* text : {relation.unit, relation.other}) {
      for (Cursor expptr{std::string_view(text)}; !expptr.at_stop();) {
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
