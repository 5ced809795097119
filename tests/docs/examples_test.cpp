// Runs every worksheet of examples/. A worksheet says in comments what has to come out, in the
// form of the output:
//
//   # expect: power = 14.1074 kW
//   # expect: v0 = [ 22.9813 , 19.2836 , 0 ] m/s
//
// The name's last line in the output must show that number in that unit. A unit that was asked for
// beside others is found among them.

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

#include "docs/files.h"
#include "quantiverse/quantiverse.h"

namespace quantiverse::docs_test {
namespace {

// Six digits are shown.
constexpr double kTolerance = 1e-5;

struct Quantity {
  std::vector<double> components;  // one, or the three of a vector
  std::string unit;
};

std::optional<double> take_number(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  double value = 0.0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
  if (end.ec != std::errc()) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end.ptr - text.data()));
  return value;
}

// "1.5 m" or "[ 1 , 2 , 3 ] m".
std::optional<Quantity> parse_quantity(std::string_view text) {
  Quantity quantity;
  const bool is_vector = text.starts_with("[");
  for (std::size_t i = 0; i < (is_vector ? 3 : 1); ++i) {
    if (is_vector) text.remove_prefix(std::min(text.find_first_of("[,"), text.size() - 1) + 1);
    const std::optional<double> number = take_number(text);
    if (!number) return std::nullopt;
    quantity.components.push_back(*number);
  }
  if (is_vector) {
    if (!text.starts_with(" ]")) return std::nullopt;
    text.remove_prefix(2);
  }
  quantity.unit = trimmed(text);
  return quantity;
}

// Relative to the largest component, so that an expected 0 has a scale.
bool agree(const Quantity& shown, const Quantity& expected) {
  if (shown.components.size() != expected.components.size()) return false;
  double scale = 0.0;
  for (const double component : expected.components) scale = std::max(scale, std::abs(component));
  for (std::size_t i = 0; i < expected.components.size(); ++i) {
    // Written so that NaN doesn't agree.
    if (!(std::abs(shown.components[i] - expected.components[i]) <= kTolerance * scale)) {
      return false;
    }
  }
  return true;
}

// What stands behind the name in its last result: " = 1.5 m = 150 cm".
std::string last_result(const std::vector<std::string>& output, const std::string& name) {
  const std::string start = "       " + name;
  std::string result;
  for (const std::string& line : output) {
    if (line.starts_with(start + " = ")) result = line.substr(start.size());
  }
  return result;
}

std::optional<Quantity> shown_in_unit(std::string_view results, const std::string& unit) {
  constexpr std::string_view kEquals = " = ";
  while (results.starts_with(kEquals)) {
    results.remove_prefix(kEquals.size());
    const std::size_t end = std::min(results.find(kEquals), results.size());
    const std::optional<Quantity> quantity = parse_quantity(results.substr(0, end));
    if (quantity && quantity->unit == unit) return quantity;
    results.remove_prefix(end);
  }
  return std::nullopt;
}

// Why the expectation isn't met, or nothing.
std::string complaint_about(const std::string& expectation,
                            const std::vector<std::string>& output) {
  const std::size_t equals = expectation.find(" = ");
  if (equals == std::string::npos) return "not of the form name = value: " + expectation;
  const std::optional<Quantity> expected = parse_quantity(expectation.substr(equals + 3));
  if (!expected) return "not a value: " + expectation;

  const std::string results = last_result(output, expectation.substr(0, equals));
  if (results.empty()) return "no result has this name: " + expectation;
  const std::optional<Quantity> shown = shown_in_unit(results, expected->unit);
  if (!shown) return "not shown in this unit: " + expectation + ", but" + results;
  if (!agree(*shown, *expected)) return "expected " + expectation + ", but" + results;
  return {};
}

// All that is wrong with a worksheet, a line each. Empty is good.
std::string complaints_about(const std::string& worksheet) {
  constexpr std::string_view kMark = "# expect: ";
  const std::string text = interpret_dimensional_input_lines(worksheet);
  const std::vector<std::string> output = lines_of(text);

  std::string complaints;
  for (const std::string& line : output) {
    if (line.find(" ERROR") != std::string::npos) complaints += line + "\n";
  }
  int expectations = 0;
  for (const std::string& line : lines_of(worksheet)) {
    if (!line.starts_with("# expect")) continue;
    ++expectations;
    const std::string complaint = line.starts_with(kMark)
                                      ? complaint_about(line.substr(kMark.size()), output)
                                      : "an expectation starts with \"# expect: \": " + line;
    if (!complaint.empty()) complaints += complaint + "\n";
  }
  if (expectations == 0) complaints += "no expectation\n";
  return complaints;
}

TEST(Examples, EveryWorksheetGivesItsRightAnswers) {
  int worksheets = 0;
  for (const auto& entry : std::filesystem::directory_iterator(source_dir() / "examples")) {
    if (entry.path().extension() != ".txt") continue;
    ++worksheets;
    EXPECT_EQ(complaints_about(read_file(entry.path())), "") << "in " << entry.path();
  }
  EXPECT_GE(worksheets, 10);
}

// The check above is worth what it finds.
TEST(Examples, AWrongWorksheetIsFound) {
  const struct {
    const char* worksheet;
    const char* complaint;  // part of it; empty for none
  } cases[] = {
      {"# expect: x = 60 in\nx = 5 ft; m; in\n", ""},
      {"# expect: x = 60.0005 in\nx = 5 ft; in\n", ""},
      {"# expect: x = 60.001 in\nx = 5 ft; in\n", "expected x = 60.001 in, but = 60 in"},
      {"# expect: x = 60 in\nx = 5 ft; in\nx = 6 ft; in\n", "but = 72 in"},
      {"# expect: x = 60 in\nx = 5 ft\n", "not shown in this unit"},
      {"# expect: x = 2\nxx = 2\n", "no result has this name"},
      {"# expect: v = [ 0 , 2 , 0 ] m\nv = [0, 2, 0] m\n", ""},
      {"# expect: v = [ 0 , 2 , 1 ] m\nv = [0, 2, 0] m\n", "expected v"},
      {"# expect: v = 0 m\nv = [0, 2, 0] m\n", "expected v"},
      {"# expect: x = inf\nx = ln(0)\n", "expected x"},
      {"# expect: x = two\nx = 2\n", "not a value"},
      {"# expect x = 2\nx = 2\n", "an expectation starts with"},
      {"# expect: x = 2\nx = 2\n3 m + 2 s\n", "ERROR:  Adding"},
      {"# expect: x = 2 m\nx = 2 m; s\n", "ERROR IN REQUESTED OUTPUT"},
      {"x = 2\n", "no expectation"},
  };
  for (const auto& c : cases) {
    const std::string complaints = complaints_about(c.worksheet);
    EXPECT_NE(complaints.find(c.complaint), std::string::npos) << c.worksheet << complaints;
    EXPECT_EQ(complaints.empty(), *c.complaint == '\0') << c.worksheet << complaints;
  }
}

}  // namespace
}  // namespace quantiverse::docs_test
