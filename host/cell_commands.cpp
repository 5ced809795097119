#include <string>
#include <utility>
#include <vector>

#include "host/commands.h"
#include "host/workbook.h"

// Commands that work on the sheet as a user does.
namespace quantiverse::host {
namespace {

Area area_from(const Json& json, const Sheet& sheet) {
  const auto area = sheet.area_of(text_of(json, "a reference"));
  if (!area) throw BadCommand("not a reference: " + json.get<std::string>());
  if (area->size() > kMostElements) throw BadCommand("too many cells");
  return *area;
}

Json shown(const Host& host, const Area& area) {
  return {{"formula", host.workbook.formula_of(area)},
          {"value", to_json(host.workbook.value_of(area).value_or(Value{}))}};
}

void require_change(bool is_changed) {
  if (!is_changed) throw BadCommand("part of an array can't be changed");
}

// One constant for each cell of the area.
std::vector<Value> constants_for(const Area& area, const Value& value) {
  if (value.is<Reference>() || value.is<Missing>()) throw BadCommand("a cell can't hold that");
  if (const auto* array = value.as<Array>()) {
    if (array->rows != area.rows() || array->columns != area.columns()) {
      throw BadCommand("the array has another size than the cells");
    }
    return array->elements;
  }
  return {static_cast<std::size_t>(area.size()), value};
}

}  // namespace

Json cell(Host& host, const Json& arguments) {
  const Area area = area_from(arguments[0], host.sheet());
  if (arguments.size() == 1) return shown(host, area);
  const Value value = from_json(arguments[1], host.sheet());
  const auto* text = value.as<std::string>();
  if (value.is<Nil>()) {
    require_change(host.workbook.clear(area));
  } else if (text != nullptr && text->starts_with('=')) {
    if (area.size() > kMostFormulas) throw BadCommand("too many formulas");
    require_change(host.workbook.set_formula(area, *text, Notation::kA1));
  } else {
    require_change(host.workbook.set_constants(area, constants_for(area, value)));
  }
  return ok();
}

Json array_cell(Host& host, const Json& arguments) {
  const Area area = area_from(arguments[0], host.sheet());
  const std::string formula = text_of(arguments[1], "a formula");
  if (!formula.starts_with('=')) throw BadCommand("a formula begins with \"=\"");
  require_change(host.workbook.set_array_formula(area, formula, Notation::kA1));
  const auto value = host.workbook.value_of(area);
  Json rows = to_json(value.value_or(Value{}));
  if (area.size() == 1) rows = Json::array({Json::array({std::move(rows)})});
  return {{"formula", host.workbook.formula_of(area)}, {"value", std::move(rows)}};
}

Json select(Host& host, const Json& arguments) {
  if (arguments[0].is_null()) {
    host.selection.reset();
  } else {
    host.selection = area_from(arguments[0], host.sheet());
  }
  return ok();
}

}  // namespace quantiverse::host
