#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "numerics/objective.h"

// What the tests of the solvers share: functions in the form of their tables, and objectives that
// keep the trial points. NO_VALUE stands in `err` after an evaluation that fails.
namespace quantiverse {

#define NO_VALUE "no value"

using Points = std::vector<double>;
using Value = std::optional<double>;  // nothing: the evaluation fails
using Function = std::function<Value(double)>;
#define OF(expression) []([[maybe_unused]] auto x) -> Value { return expression; }

inline Value only_if(bool works, double value) { return works ? Value(value) : std::nullopt; }

inline Objective traced(const Function& function, Points& points) {
  return [&function, &points](const double* x, double* f, TextBuf& err) {
    *f = 0.0;
    if (!err.is_empty_text()) return;
    points.push_back(*x);
    const Value value = function(*x);
    if (!value) err.append_text(NO_VALUE);
    *f = value.value_or(0.0);
  };
}

}  // namespace quantiverse
