#include <string>
#include <utility>
#include <vector>

#include "host/operations.h"

// What add-ins read from cells and write into them.
namespace quantiverse::host {
namespace {

constexpr int kIsInArray = 49;

// As FORMULA takes a text: with R1C1 references if it is a formula, else as typed.
bool write_into(Workbook& workbook, const Area& area, const std::string& text) {
  if (area.size() > kMostFormulas) return false;
  if (text.starts_with('=')) return workbook.set_formula(area, text, Notation::kR1C1);
  if (text.empty()) return workbook.clear(area);
  return workbook.set_constants(
      area, std::vector(static_cast<std::size_t>(area.size()), typed_value(text)));
}

}  // namespace

Outcome active_cell(Host& host, const Arguments&, int) {
  if (!host.selection) return {};
  const Area& first = *host.selection;
  return success(
      {Reference{{first.first_row, first.first_column, first.first_row, first.first_column}}});
}

Outcome get_formula(Host& host, const Arguments& arguments, int) {
  const auto area = arguments.area(0);
  if (!area) return {};
  const std::string formula = host.workbook.formula_of(*area);
  // A constant stays as it is: none begins with "=".
  return success({host.sheet().to_r1c1(formula, area->first_row, area->first_column)});
}

Outcome get_cell(Host& host, const Arguments& arguments, int) {
  const auto area = arguments.is_left_out(1) ? host.selection : arguments.area(1);
  if (!area || arguments.number(0) != kIsInArray) return {};
  return success({host.workbook.is_in_array(*area)});
}

Outcome convert_formula(Host& host, const Arguments& arguments, int) {
  const auto text = arguments.text(0);
  const auto is_from_a1 = coerced(arguments.at(1), kTypeBool);
  const auto is_to_a1 = coerced(arguments.at(2), kTypeBool);
  const auto area = arguments.is_left_out(4) ? Area{} : arguments.area(4);
  if (!text || !is_from_a1 || !is_to_a1 || !area) return {};
  if (*is_from_a1 == *is_to_a1) return success({*text});
  const Sheet& sheet = host.sheet();
  return success({is_to_a1 == Value{true}
                      ? sheet.to_a1(*text, area->first_row, area->first_column)
                      : sheet.to_r1c1(*text, area->first_row, area->first_column)});
}

Outcome write_formula(Host& host, const Arguments& arguments, int) {
  const auto text = arguments.text(0);
  const auto area = arguments.is_left_out(1) ? host.selection : arguments.area(1);
  if (!text || !area || !write_into(host.workbook, *area, *text)) return {};
  return success({true});
}

Outcome write_array_formula(Host& host, const Arguments& arguments, int) {
  const auto text = arguments.text(0);
  const auto area = arguments.is_left_out(1) ? host.selection : arguments.area(1);
  if (!text || !text->starts_with('=') || !area || area->size() > kMostElements) return {};
  if (!host.workbook.set_array_formula(*area, *text, Notation::kR1C1)) return {};
  return success({true});
}

}  // namespace quantiverse::host
