#include "quantity/unit_table.h"

namespace quantiverse {
namespace {

// clang-format off

// Exponents of angle, time, mass, length, temperature, amount, temperature difference, charge.
constexpr DimensionRow kNone{                  "Dimensionless",                      { 0,  0,  0,  0,  0,  0,  0,  0}};
constexpr DimensionRow kAngle{                 "Plane angle",                        { 1,  0,  0,  0,  0,  0,  0,  0}};
constexpr DimensionRow kAngularSpeed{          "Angular speed",                      { 1, -1,  0,  0,  0,  0,  0,  0}};
constexpr DimensionRow kLength{                "Length",                             { 0,  0,  0,  1,  0,  0,  0,  0}};
constexpr DimensionRow kArea{                  "Area and permeability",              { 0,  0,  0,  2,  0,  0,  0,  0}};
constexpr DimensionRow kVolume{                "Volume",                             { 0,  0,  0,  3,  0,  0,  0,  0}};
constexpr DimensionRow kMass{                  "Mass",                               { 0,  0,  1,  0,  0,  0,  0,  0}};
constexpr DimensionRow kConcentration{         "Concentration, as a mass density",   { 0,  0,  1, -3,  0,  0,  0,  0}};
constexpr DimensionRow kTime{                  "Time",                               { 0,  1,  0,  0,  0,  0,  0,  0}};
constexpr DimensionRow kFrequency{             "Frequency and activity",             { 0, -1,  0,  0,  0,  0,  0,  0}};
constexpr DimensionRow kSpeed{                 "Speed",                              { 0, -1,  0,  1,  0,  0,  0,  0}};
constexpr DimensionRow kForce{                 "Force",                              { 0, -2,  1,  1,  0,  0,  0,  0}};
constexpr DimensionRow kPressure{              "Pressure",                           { 0, -2,  1, -1,  0,  0,  0,  0}};
constexpr DimensionRow kEnergy{                "Energy",                             { 0, -2,  1,  2,  0,  0,  0,  0}};
constexpr DimensionRow kPower{                 "Power",                              { 0, -3,  1,  2,  0,  0,  0,  0}};
constexpr DimensionRow kDynamicViscosity{      "Dynamic viscosity",                  { 0, -1,  1, -1,  0,  0,  0,  0}};
constexpr DimensionRow kKinematicViscosity{    "Kinematic viscosity",                { 0, -1,  0,  2,  0,  0,  0,  0}};
constexpr DimensionRow kAbsoluteTemperature{   "Absolute temperature",               { 0,  0,  0,  0,  1,  0,  0,  0}};
constexpr DimensionRow kTemperatureDifference{ "Temperature difference",             { 0,  0,  0,  0,  0,  0,  1,  0}};
constexpr DimensionRow kAmount{                "Amount of substance",                { 0,  0,  0,  0,  0,  1,  0,  0}};
constexpr DimensionRow kCharge{                "Charge",                             { 0,  0,  0,  0,  0,  0,  0,  1}};
constexpr DimensionRow kCurrent{               "Current",                            { 0, -1,  0,  0,  0,  0,  0,  1}};
constexpr DimensionRow kVoltage{               "Voltage",                            { 0, -2,  1,  2,  0,  0,  0, -1}};
constexpr DimensionRow kResistance{            "Resistance",                         { 0, -1,  1,  2,  0,  0,  0, -2}};
constexpr DimensionRow kCapacitance{           "Capacitance",                        { 0,  2, -1, -2,  0,  0,  0,  2}};
constexpr DimensionRow kInductance{            "Inductance",                         { 0,  0,  1,  2,  0,  0,  0, -2}};
constexpr DimensionRow kMagneticFlux{          "Magnetic flux",                      { 0, -1,  1,  2,  0,  0,  0, -1}};
constexpr DimensionRow kMagneticFluxDensity{   "Magnetic flux density",              { 0, -1,  1,  0,  0,  0,  0, -1}};
constexpr DimensionRow kMagneticFieldStrength{ "Magnetic field strength",            { 0, -1,  0, -1,  0,  0,  0,  1}};

// Each value is the double that a result is made with. Where two names of one quantity differ in
// late digits (`hour` and `hr`, `NauticalMile` and `league`), or a value is not what the name
// promises (`stoke`, `Curie`), worksheets rely on what has always been computed.
constexpr UnitRow kUnits[] = {

    {100.0, &kNone, {"%", "Percent", "percent"}},

    {0.15915494309189535, &kAngle, {"rev", "revolution", "revolutions"}},
    {1.0, &kAngle, {"rad", "radian", "radians"}},
    {57.29577951308232, &kAngle, {"deg", "degree", "degrees"}},
    {3437.746770784939, &kAngle, {"arcmin", "arcminute"}},
    {206264.80624709636, &kAngle, {"arcsec", "arcsecond"}},

    {0.15915494309189535, &kAngularSpeed, {"rps"}},
    {9.54929658551372, &kAngularSpeed, {"rpm", "rpms"}},

    {1.05702099772212e-16, &kLength, {"lightyear", "lightyears"}},
    {0.000179985601, &kLength, {"NauticalMile", "Nmile"}},
    {0.000179985601151908, &kLength, {"league"}},
    {0.000621371192237334, &kLength, {"mi", "mile", "miles"}},
    {0.001, &kLength, {"kilometer", "kilometers", "km"}},
    {0.546806649168854, &kLength, {"fathom", "fathoms"}},
    {1.0, &kLength, {"m", "meter", "meters"}},
    {1.09361329833771, &kLength, {"yard", "yards", "yd"}},
    {2.18722, &kLength, {"cubit", "cubits"}},
    {3.28083989501312, &kLength, {"feet", "foot", "ft"}},
    {39.3700787401575, &kLength, {"in", "inch", "inches"}},
    {100.0, &kLength, {"centimeter", "centimeters", "cm"}},
    {1000.0, &kLength, {"millimeter", "millimeters", "mm"}},
    {39370.0787401575, &kLength, {"mil"}},
    {1000000.0, &kLength, {"micrometer", "micrometers", "micron", "microns", "um"}},
    {1650763.73, &kLength, {"KrWavelength"}},
    {1000000000.0, &kLength, {"nanometer", "nanometers", "nm"}},
    {10000000000.0, &kLength, {"angstrom"}},

    {0.0001, &kArea, {"hectare", "hectares"}},
    {0.000247105381467165, &kArea, {"acre", "acres"}},
    {1013253354000.0, &kArea, {"D", "Darcies", "darcies", "Darcy", "darcy"}},
    {1013253354000000.0, &kArea, {"mD", "millidarcies", "millidarcy"}},

    {0.275895838616164, &kVolume, {"cord", "cords"}},
    {1.0, &kVolume, {"stere"}},
    {6.28981056977507, &kVolume, {"barrel", "barrels"}},
    {28.3775932584017, &kVolume, {"bushel", "bushels"}},
    {113.510373033607, &kVolume, {"peck", "pecks"}},
    {264.172051242, &kVolume, {"gal", "gallon", "gallons"}},
    {423.776000657863, &kVolume, {"boardfoot"}},
    {1000.0, &kVolume, {"L", "l", "liter", "liters"}},
    {1056.68820496623, &kVolume, {"quart", "quarts"}},
    {2113.37641886519, &kVolume, {"pint", "pints"}},
    {4226.75283773037, &kVolume, {"cup", "cups"}},
    {33814.022701843, &kVolume, {"fluidounce", "fluidounces"}},
    {67628.045403686, &kVolume, {"Tablespoon", "tablespoon", "Tablespoons", "tablespoons", "Tbs"}},
    {202884.136211058, &kVolume, {"teaspoon", "teaspoons", "tsp"}},
    {1000000.0, &kVolume, {"cc", "milliliter", "milliliters", "mL", "ml"}},

    {0.000984206527611061, &kMass, {"ton", "tons"}},
    {0.001, &kMass, {"Mg", "tonne"}},
    {0.06852176556, &kMass, {"slug", "slugs"}},
    {0.15747304441777, &kMass, {"stone", "stones"}},
    {1.0, &kMass, {"kg", "kilogram", "kilograms"}},
    {2.20462262184878, &kMass, {"lbm"}},
    {35.2739619495804, &kMass, {"ozm"}},
    {1000.0, &kMass, {"g", "gram", "grams"}},
    {5000.0, &kMass, {"carat", "carats"}},
    {15432.3583529414, &kMass, {"grain", "grains"}},
    {1000000.0, &kMass, {"mg", "milligram", "milligrams"}},
    {1000000000.0, &kMass, {"microgram", "micrograms", "ug"}},
    {1000000000000.0, &kMass, {"nanogram", "nanograms", "ng"}},

    {1000.0, &kConcentration, {"ppm"}},
    {1000000.0, &kConcentration, {"ppb"}},
    {1000000000.0, &kConcentration, {"ppt"}},

    {3.168876487e-08, &kTime, {"year", "years", "yr"}},
    {1.65343916e-06, &kTime, {"week", "weeks"}},
    {1.15740740740741e-05, &kTime, {"day", "days"}},
    {0.0002777777777778, &kTime, {"hour", "hours"}},
    {0.000277777777778, &kTime, {"hr"}},
    {0.01666666666667, &kTime, {"min", "minute", "minutes"}},
    {1.0, &kTime, {"s", "sec", "second", "seconds"}},
    {1000.0, &kTime, {"millisecond", "milliseconds", "ms", "msec"}},

    {1e-09, &kFrequency, {"GBq", "GHz"}},
    {1e-06, &kFrequency, {"MBq", "MHz"}},
    {0.001, &kFrequency, {"kBq", "kHz"}},
    {1.0, &kFrequency, {"Becquerel", "becquerel", "Bq", "Hertz", "Hz", "hz"}},
    {37000000000.0, &kFrequency, {"Curie", "curie"}},

    {1.94384449244061, &kSpeed, {"knot", "knots"}},
    {2.2369362920544, &kSpeed, {"mph"}},
    {3.280839895, &kSpeed, {"fps"}},
    {3.6, &kSpeed, {"kph"}},
    {196.8503937, &kSpeed, {"fpm"}},

    {1e-06, &kForce, {"MN"}},
    {0.000224808943099711, &kForce, {"kip", "kips"}},
    {0.001, &kForce, {"kN"}},
    {0.101971600501374, &kForce, {"kgf"}},
    {0.224808943099711, &kForce, {"lb", "lbf", "lbs", "pound", "pounds"}},
    {1.0, &kForce, {"N", "Newton", "newton", "Newtons", "newtons"}},
    {3.59694310193539, &kForce, {"ounce", "ounces", "oz", "ozf"}},
    {100000.0, &kForce, {"dyne", "dynes"}},

    {1.45037739690094e-13, &kPressure, {"Gpsi"}},
    {1.45037739690094e-10, &kPressure, {"Mpsi"}},
    {1e-09, &kPressure, {"GPa", "Gpa"}},
    {1.45037739690094e-07, &kPressure, {"ksi"}},
    {1e-06, &kPressure, {"MPa", "Mpa"}},
    {9.86923266716013e-06, &kPressure, {"atm", "atmosphere"}},
    {1e-05, &kPressure, {"bar", "bars"}},
    {0.000145037739690094, &kPressure, {"psi"}},
    {0.000296133971008484, &kPressure, {"inHg"}},
    {0.000750061505043414, &kPressure, {"cmHg"}},
    {0.001, &kPressure, {"kPa", "kpa"}},
    {0.00401864651985211, &kPressure, {"inWater"}},
    {0.00750061505043414, &kPressure, {"mmHg", "Torr", "torr", "Torrs", "torrs"}},
    {0.01, &kPressure, {"millibar", "millibars"}},
    {0.0101974428892211, &kPressure, {"cmWater"}},
    {0.0208854345154, &kPressure, {"psf"}},
    {1.0, &kPressure, {"Pa", "Pascal", "Pascals"}},
    {1000.0, &kPressure, {"mPa", "mpa"}},

    {1e-09, &kEnergy, {"GJ"}},
    {1e-06, &kEnergy, {"MJ"}},
    {0.000238845897, &kEnergy, {"kcal", "kcals"}},
    {0.000947817078, &kEnergy, {"BritishThermalUnit", "BritishThermalUnits", "BTU", "Btu", "btu", "Btus", "btus"}},
    {0.001, &kEnergy, {"kJ"}},
    {0.238845897, &kEnergy, {"cal", "Calorie", "calorie", "Calories", "calories", "cals"}},
    {1.0, &kEnergy, {"J", "Joule", "joule", "Joules", "joules"}},
    {1000.0, &kEnergy, {"mJ"}},
    {10000000.0, &kEnergy, {"erg", "ergs"}},
    {6.241506479963234e+18, &kEnergy, {"ElectronVolt", "eV"}},

    {1e-09, &kPower, {"GW"}},
    {1e-06, &kPower, {"MW"}},
    {0.001, &kPower, {"kiloWatt", "kiloWatts", "kW"}},
    {0.00134102209244049, &kPower, {"horsepower", "hp"}},
    {1.0, &kPower, {"W", "Watt", "watt", "Watts", "watts"}},
    {1000.0, &kPower, {"mW"}},

    {0.0001450377, &kDynamicViscosity, {"reyn", "reynold"}},
    {1.0, &kDynamicViscosity, {"poiseuille", "poiseuilles"}},
    {10.0, &kDynamicViscosity, {"poise", "poises"}},
    {1000.0, &kDynamicViscosity, {"centipoise", "centipoises", "cp"}},
    {10000.0, &kDynamicViscosity, {"millipoise", "millipoises"}},

    {10.0, &kKinematicViscosity, {"stoke", "stokes"}},
    {1000000.0, &kKinematicViscosity, {"centistoke", "centistokes"}},

    {1.0, &kAbsoluteTemperature, {"degC", "degK"}},
    {1.8, &kAbsoluteTemperature, {"degF", "degR"}},

    {1.0, &kTemperatureDifference, {"degCdiff", "degKdiff"}},
    {1.8, &kTemperatureDifference, {"degFdiff", "degRdiff"}},

    {0.001, &kAmount, {"kmol"}},
    {1.0, &kAmount, {"mol", "mole", "moles"}},

    {1.0, &kCharge, {"C", "Coulomb", "coulomb", "Coulombs", "coulombs"}},

    {1.0, &kCurrent, {"A", "Amp", "amp", "ampere", "amperes", "Amps", "amps"}},
    {1000.0, &kCurrent, {"mA", "milliamp", "milliamps"}},
    {1000000.0, &kCurrent, {"microamp", "microamps"}},

    {1.0, &kVoltage, {"V", "Volt", "volt", "Volts", "volts"}},
    {1000.0, &kVoltage, {"millivolt", "millivolts", "mV"}},
    {1000000.0, &kVoltage, {"microvolt", "microvolts"}},

    {1.0, &kResistance, {"Ohm", "ohm", "Ohms", "ohms"}},

    {1.0, &kCapacitance, {"F", "Farad", "farad", "Farads", "farads"}},
    {1000.0, &kCapacitance, {"mF", "millifarad", "millifarads"}},
    {1000000.0, &kCapacitance, {"microfarad", "microfarads"}},
    {1000000000.0, &kCapacitance, {"nanofarad", "nanofarads"}},

    {1.0, &kInductance, {"H", "Henries", "henries", "Henry", "henry"}},

    {1.0, &kMagneticFlux, {"Wb", "Weber", "weber", "Webers", "webers"}},
    {100000000.0, &kMagneticFlux, {"Maxwell", "maxwell", "Maxwells", "maxwells"}},

    {1.0, &kMagneticFluxDensity, {"Tesla", "tesla", "Teslas", "teslas"}},
    {1000.0, &kMagneticFluxDensity, {"mT"}},
    {10000.0, &kMagneticFluxDensity, {"Gauss", "gauss", "Gausses", "gausses"}},

    {0.01256637061436, &kMagneticFieldStrength, {"Oe", "oersted", "oersteds"}},
};

// clang-format on

constexpr std::size_t count_names() {
  std::size_t count = 0;
  for (const UnitRow& row : kUnits) {
    for (const char* name : row.names) count += name != nullptr ? 1 : 0;
  }
  return count;
}
static_assert(std::size(kUnits) == kUnitCount);
static_assert(count_names() == kUnitNameCount);

}  // namespace

std::span<const UnitRow> unit_rows() { return kUnits; }

}  // namespace quantiverse
