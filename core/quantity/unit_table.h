#pragma once

#include <array>
#include <cstddef>
#include <span>

// The dictionary's data: every unit name that is built in.
namespace quantiverse {

// What a unit measures, as the documentation calls it and as exponents in the order of
// DimValue::exps.
struct DimensionRow {
  const char* heading;
  std::array<double, 8> exps;
};

inline constexpr std::size_t kMostNames = 7;

// One unit with all its spellings.
struct UnitRow {
  double per_base;  // how many of it make one MKS base unit of its dimension; never 0
  const DimensionRow* dimension;
  std::array<const char*, kMostNames> names;  // the unused ones at the end are null
};

// All units, those of a dimension together.
std::span<const UnitRow> unit_rows();

inline constexpr std::size_t kUnitCount = 153;
inline constexpr std::size_t kUnitNameCount = 375;

}  // namespace quantiverse
