#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/formula.h"
#include "host/reference.h"
#include "host/value.h"

namespace quantiverse::host {

// How a formula's text names cells.
enum class Notation { kA1, kR1C1 };

// One sheet of cells. What is set takes effect at once: every formula that depends on it, by
// whatever way, is calculated again, those that others need first.
class Workbook {
 public:
  // Carries out a call whose references have been replaced by their values.
  using Evaluate = std::function<Value(const FormulaCall&)>;

  Workbook(Sheet sheet, Evaluate evaluate);

  [[nodiscard]] const Sheet& sheet() const { return sheet_; }

  // Of one cell its value, of more an array. Nothing if that were too large.
  [[nodiscard]] std::optional<Value> value_of(const Area& area) const;
  // A reference replaced by its value; others are themselves. Nothing as above.
  [[nodiscard]] std::optional<Value> without_reference(const Value& value) const;
  // The formula of the area's first cell in A1, or its constant as text; empty for an empty cell.
  [[nodiscard]] std::string formula_of(const Area& area) const;
  // Whether the area's first cell is part of an array formula.
  [[nodiscard]] bool is_in_array(const Area& area) const;

  // Each sets the cells of `area`.
  // false: a part of an array formula can't be changed, nor any cell while one is calculated.
  // REQUIRES: no more cells than kMostElements, but for clear().
  [[nodiscard]] bool clear(const Area& area);
  // constants: row by row, one a cell. None is an array or a reference.
  [[nodiscard]] bool set_constants(const Area& area, std::vector<Value> constants);
  // text: begins with "="; an A1 text is meant for the first cell, and moves along in the others.
  [[nodiscard]] bool set_formula(const Area& area, const std::string& text, Notation notation);
  [[nodiscard]] bool set_array_formula(const Area& area, const std::string& text,
                                       Notation notation);

 private:
  using Place = std::pair<int, int>;
  struct Formula {
    Area area;  // that it fills
    bool is_array = false;
    std::string text;
    std::optional<FormulaCall> call;  // nothing for one that isn't understood
  };
  using Formulas = std::map<Place, Formula>;  // by the area's first cell

  [[nodiscard]] bool may_change(const Area& area) const;
  void remove(const Area& area);
  void put_formula(const Area& area, bool is_array, std::string a1);
  // REQUIRES: `changed` is where cells have just been set.
  void recalculate(const Area& changed);
  [[nodiscard]] std::vector<Formulas::iterator> dependents_of(const Area& changed);
  void calculate(const Formula& formula);
  [[nodiscard]] Value result_of(const Formula& formula) const;
  [[nodiscard]] const Formula* formula_at(int row, int column) const;

  Sheet sheet_;
  Evaluate evaluate_;
  std::map<Place, Value> values_;  // of cells that aren't empty
  Formulas formulas_;
  bool is_calculating_ = false;
};

}  // namespace quantiverse::host
