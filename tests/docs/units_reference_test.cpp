// The tables of docs/units.md are made from the unit table, between two marks in the file.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <limits>

#include "docs/files.h"
#include "quantity/unit_table.h"
#include "quantiverse/quantiverse.h"

namespace quantiverse::docs_test {
namespace {

constexpr std::string_view kBeginMark = "<!-- tables: begin -->\n";
constexpr std::string_view kEndMark = "<!-- tables: end -->\n";

// All digits that tell the double from its neighbours.
std::string every_digit(double value) {
  char digits[32];
  const auto end =
      std::to_chars(std::begin(digits), std::end(digits), value, std::chars_format::general);
  return {std::begin(digits), end.ptr};
}

// The stored values are good for about so many.
std::string nine_digits(double value) {
  char digits[32];
  const auto end =
      std::to_chars(std::begin(digits), std::end(digits), value, std::chars_format::general, 9);
  return {std::begin(digits), end.ptr};
}

// The step from 1 to 2 of a unit as the language shows it, "0.3048 m": the zero point of degC and
// degF goes out.
std::string step_of(const std::string& unit) {
  const std::string shown =
      interpret_dimensional_input_lines("x = 2 " + unit + " - 1 " + unit + "\n");
  const std::string before = "\n       x = ";
  const std::size_t start = shown.find(before);
  if (start == std::string::npos) return {};
  const std::size_t from = start + before.size();
  return shown.substr(from, shown.find('\n', from) - from);
}

std::string unit_text(const UnitRow& row) {
  const std::string step = step_of(row.names[0]);
  return trimmed(step.substr(std::min(step.find(' '), step.size())));
}

// As Markdown makes it for a heading.
std::string anchor_of(std::string_view heading) {
  std::string anchor;
  for (const char c : heading) {
    if (c == ' ') anchor += '-';
    if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
      anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
  }
  return anchor;
}

std::string table_head(const UnitRow& row) {
  const std::string unit = unit_text(row);
  const std::string base = unit.empty() ? "a plain number" : "`" + unit + "`";
  return std::string("\n### ") + row.dimension->heading + "\n\n| Names | 1 of it, as " + base +
         " | How many make 1 |\n|---|---|---|\n";
}

std::string table_row(const UnitRow& row) {
  std::string line = "| ";
  for (const char* name : row.names) {
    if (name == nullptr) break;
    if (name != row.names[0]) line += ", ";
    line += std::string("`") + name + "`";
  }
  return line + " | " + nine_digits(1.0 / row.per_base) + " | " + every_digit(row.per_base) +
         " |\n";
}

std::string units_reference() {
  std::string contents;
  std::string tables;
  const DimensionRow* dimension = nullptr;
  for (const UnitRow& row : unit_rows()) {
    if (row.dimension != dimension) {
      dimension = row.dimension;
      contents +=
          std::string("- [") + dimension->heading + "](#" + anchor_of(dimension->heading) + ")\n";
      tables += table_head(row);
    }
    tables += table_row(row);
  }
  return "\n" + contents + tables + "\n";
}

TEST(UnitsReference, IsMadeFromTheTable) {
  EXPECT_EQ(
      check_generated(source_dir() / "docs" / "units.md", kBeginMark, kEndMark, units_reference()),
      "");
}

// What the tables promise is what a worksheet gets, by every name.
TEST(UnitsReference, EveryNameHasTheSizeThatIsShown) {
  for (const UnitRow& row : unit_rows()) {
    for (const char* name : row.names) {
      if (name == nullptr) break;
      const std::string step = step_of(name);
      double shown = std::numeric_limits<double>::quiet_NaN();
      std::from_chars(step.data(), step.data() + step.size(), shown);
      EXPECT_NEAR(shown * row.per_base, 1.0, 1e-5) << name << ": " << step;
      EXPECT_EQ(step.substr(std::min(step.find(' '), step.size())),
                unit_text(row).empty() ? " " : " " + unit_text(row))
          << name;
    }
  }
}

}  // namespace
}  // namespace quantiverse::docs_test
