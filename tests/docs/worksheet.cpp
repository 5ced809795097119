#include "docs/worksheet.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <set>

#include "docs/files.h"
#include "quantiverse/quantiverse.h"

namespace quantiverse::docs_test {
namespace {

// Six digits are shown.
constexpr double kSixDigits = 1e-5;

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

// Relative to the largest component, so that a 0 beside others has a scale.
bool agree(const Quantity& shown, const Quantity& expected, std::optional<double> within) {
  if (shown.components.size() != expected.components.size()) return false;
  double scale = 0.0;
  for (const double component : expected.components) scale = std::max(scale, std::abs(component));
  const double limit = scale > 0.0 ? within.value_or(kSixDigits) * scale : within.value_or(0.0);
  for (std::size_t i = 0; i < expected.components.size(); ++i) {
    // Written so that NaN doesn't agree.
    if (!(std::abs(shown.components[i] - expected.components[i]) <= limit)) return false;
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
    std::optional<Quantity> quantity = parse_quantity(results.substr(0, end));
    if (quantity && quantity->unit == unit) return quantity;
    results.remove_prefix(end);
  }
  return std::nullopt;
}

// Why the expectation isn't met, or nothing.
std::string complaint_about(const std::string& expectation, const std::vector<std::string>& output,
                            std::optional<double> within) {
  const std::size_t equals = expectation.find(" = ");
  if (equals == std::string::npos) return "not of the form name = value: " + expectation;
  const std::optional<Quantity> expected = parse_quantity(expectation.substr(equals + 3));
  if (!expected) return "not a value: " + expectation;

  const std::string results = last_result(output, expectation.substr(0, equals));
  if (results.empty()) return "no result has this name: " + expectation;
  const std::optional<Quantity> shown = shown_in_unit(results, expected->unit);
  if (!shown) return "not shown in this unit: " + expectation + ", but" + results;
  if (!agree(*shown, *expected, within)) return "expected " + expectation + ", but" + results;
  return {};
}

// The error lines of the output; comments are echoed in it too.
std::set<std::string> errors_in(const std::vector<std::string>& output) {
  std::set<std::string> errors;
  for (const std::string& line : output) {
    if (!line.starts_with("#") && line.find(" ERROR") != std::string::npos) {
      errors.insert(trimmed(line));
    }
  }
  return errors;
}

}  // namespace

std::optional<std::string> behind_mark(const std::string& line, const std::string& mark) {
  const std::string start = "# " + mark + ": ";
  if (!line.starts_with(start)) return std::nullopt;
  return line.substr(start.size());
}

std::string complaints_about(const std::string& worksheet) {
  const std::vector<std::string> output = lines_of(interpret_dimensional_input_lines(worksheet));
  const std::set<std::string> errors = errors_in(output);
  std::set<std::string> unannounced = errors;
  std::optional<double> within;
  int expectations = 0;
  std::string complaints;
  for (const std::string& line : lines_of(worksheet)) {
    std::string complaint;
    if (const auto expectation = behind_mark(line, "expect")) {
      complaint = complaint_about(*expectation, output, within);
      ++expectations;
    } else if (const auto error = behind_mark(line, "fails")) {
      if (!errors.contains(*error)) complaint = "no such error: " + *error;
      unannounced.erase(*error);
      ++expectations;
    } else if (const auto tolerance = behind_mark(line, "within")) {
      std::string_view text = *tolerance;
      within = take_number(text);
      if (!within) complaint = "not a number: " + line;
    } else if (line.starts_with("# expect") || line.starts_with("# fails") ||
               line.starts_with("# within")) {
      complaint = "a mark ends with \": \": " + line;
    }
    if (!complaint.empty()) complaints += complaint + "\n";
  }
  for (const std::string& error : unannounced) complaints += error + "\n";
  if (expectations == 0) complaints += "no expectation\n";
  return complaints;
}

}  // namespace quantiverse::docs_test
