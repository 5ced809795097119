#include "host/workbook.h"

#include <algorithm>
#include <cstddef>
#include <deque>

#include "host/xlcall.h"

namespace quantiverse::host {
namespace {

Area cell_area(int row, int column) { return {row, column, row, column}; }

bool refers_to(const std::optional<FormulaCall>& call, const Area& area) {
  if (!call) return false;
  return std::any_of(call->arguments.begin(), call->arguments.end(), [&](const Value& argument) {
    const auto* reference = argument.as<Reference>();
    return reference != nullptr && reference->area.meets(area);
  });
}

// What cell (row, column) of an array formula shows of the formula's result. A result of one row
// or one column repeats.
Value element_for(const Value& result, int row, int column) {
  const auto* array = result.as<Array>();
  if (array == nullptr) return result;
  const int r = array->rows == 1 ? 0 : row;
  const int c = array->columns == 1 ? 0 : column;
  if (r >= array->rows || c >= array->columns) return {Error{kErrorNotAvailable}};
  return array->at(r, c);
}

}  // namespace

Workbook::Workbook(Sheet sheet, Evaluate evaluate)
    : sheet_(sheet), evaluate_(std::move(evaluate)) {}

std::optional<Value> Workbook::value_of(const Area& area) const {
  if (area.size() > kMostElements) return std::nullopt;
  Array array(area.rows(), area.columns(), {});
  array.elements.reserve(static_cast<std::size_t>(area.size()));
  for (int row = area.first_row; row <= area.last_row; ++row) {
    for (int column = area.first_column; column <= area.last_column; ++column) {
      const auto found = values_.find({row, column});
      array.elements.push_back(found != values_.end() ? found->second : Value{});
    }
  }
  if (area.size() == 1) return array.elements.front();
  return Value{std::move(array)};
}

std::optional<Value> Workbook::without_reference(const Value& value) const {
  const auto* reference = value.as<Reference>();
  return reference != nullptr ? value_of(reference->area) : value;
}

const Workbook::Formula* Workbook::formula_at(int row, int column) const {
  const Area cell = cell_area(row, column);
  for (const auto& [place, formula] : formulas_) {
    if (formula.area.holds(cell)) return &formula;
  }
  return nullptr;
}

std::string Workbook::formula_of(const Area& area) const {
  const Formula* const formula = formula_at(area.first_row, area.first_column);
  if (formula != nullptr) return formula->text;
  const auto found = values_.find({area.first_row, area.first_column});
  return found != values_.end() ? constant_text(found->second) : std::string();
}

bool Workbook::is_in_array(const Area& area) const {
  const Formula* const formula = formula_at(area.first_row, area.first_column);
  return formula != nullptr && formula->is_array;
}

bool Workbook::may_change(const Area& area) const {
  if (is_calculating_) return false;
  return std::all_of(formulas_.begin(), formulas_.end(), [&](const auto& entry) {
    return !entry.second.area.meets(area) || area.holds(entry.second.area);
  });
}

void Workbook::remove(const Area& area) {
  std::erase_if(formulas_, [&](const auto& entry) { return area.holds(entry.second.area); });
  std::erase_if(values_, [&](const auto& entry) {
    return area.holds(cell_area(entry.first.first, entry.first.second));
  });
}

bool Workbook::clear(const Area& area) {
  if (!may_change(area)) return false;
  remove(area);
  recalculate(area);
  return true;
}

bool Workbook::set_constants(const Area& area, std::vector<Value> constants) {
  if (!may_change(area)) return false;
  remove(area);
  auto next = constants.begin();
  for (int row = area.first_row; row <= area.last_row; ++row) {
    for (int column = area.first_column; column <= area.last_column; ++column, ++next) {
      if (!next->is<Nil>()) values_[{row, column}] = std::move(*next);
    }
  }
  recalculate(area);
  return true;
}

bool Workbook::set_formula(const Area& area, const std::string& text, Notation notation) {
  if (!may_change(area)) return false;
  remove(area);
  const bool is_a1 = notation == Notation::kA1;
  const std::string r1c1 = is_a1 ? sheet_.to_r1c1(text, area.first_row, area.first_column) : text;
  for (int row = area.first_row; row <= area.last_row; ++row) {
    for (int column = area.first_column; column <= area.last_column; ++column) {
      const bool is_first = row == area.first_row && column == area.first_column;
      put_formula(cell_area(row, column), false,
                  is_a1 && is_first ? text : sheet_.to_a1(r1c1, row, column));
    }
  }
  recalculate(area);
  return true;
}

bool Workbook::set_array_formula(const Area& area, const std::string& text, Notation notation) {
  if (!may_change(area)) return false;
  remove(area);
  const bool is_a1 = notation == Notation::kA1;
  put_formula(area, true, is_a1 ? text : sheet_.to_a1(text, area.first_row, area.first_column));
  recalculate(area);
  return true;
}

void Workbook::put_formula(const Area& area, bool is_array, std::string a1) {
  auto call = parse_call(a1, sheet_);
  formulas_[{area.first_row, area.first_column}] = {area, is_array, std::move(a1), std::move(call)};
}

std::vector<Workbook::Formulas::iterator> Workbook::dependents_of(const Area& changed) {
  std::vector<Formulas::iterator> found;
  std::vector<Formulas::iterator> others;
  for (auto it = formulas_.begin(); it != formulas_.end(); ++it) {
    const bool is_hit = changed.holds(it->second.area) || refers_to(it->second.call, changed);
    (is_hit ? found : others).push_back(it);
  }
  for (std::size_t next = 0; next < found.size(); ++next) {
    const Area area = found[next]->second.area;
    const auto hit = std::stable_partition(others.begin(), others.end(), [&](const auto& other) {
      return !refers_to(other->second.call, area);
    });
    found.insert(found.end(), hit, others.end());
    others.erase(hit, others.end());
  }
  return found;
}

void Workbook::recalculate(const Area& changed) {
  is_calculating_ = true;
  auto waiting = dependents_of(changed);
  const auto needs = [](const auto& formula, const auto& other) {
    return formula != other && refers_to(formula->second.call, other->second.area);
  };
  std::vector<int> needed(waiting.size(), 0);
  std::deque<std::size_t> ready;
  for (std::size_t i = 0; i < waiting.size(); ++i) {
    for (const auto& other : waiting) needed[i] += needs(waiting[i], other) ? 1 : 0;
    if (needed[i] == 0) ready.push_back(i);
  }
  for (; !ready.empty(); ready.pop_front()) {
    const std::size_t done = ready.front();
    calculate(waiting[done]->second);
    for (std::size_t i = 0; i < waiting.size(); ++i) {
      if (needs(waiting[i], waiting[done]) && --needed[i] == 0) ready.push_back(i);
    }
  }
  // Those that need each other: once, with whatever the cells hold.
  for (std::size_t i = 0; i < waiting.size(); ++i) {
    if (needed[i] > 0) calculate(waiting[i]->second);
  }
  is_calculating_ = false;
}

Value Workbook::result_of(const Formula& formula) const {
  if (!formula.call) return {Error{kErrorName}};
  FormulaCall call = *formula.call;
  for (Value& argument : call.arguments) {
    auto value = without_reference(argument);
    if (!value) return {Error{kErrorValue}};
    argument = std::move(*value);
  }
  return without_reference(evaluate_(call)).value_or(Value{Error{kErrorValue}});
}

void Workbook::calculate(const Formula& formula) {
  const Value result = result_of(formula);
  const Area& area = formula.area;
  for (int row = area.first_row; row <= area.last_row; ++row) {
    for (int column = area.first_column; column <= area.last_column; ++column) {
      values_[{row, column}] =
          formula.is_array ? element_for(result, row - area.first_row, column - area.first_column)
                           : first_element(result);
    }
  }
}

}  // namespace quantiverse::host
