#include "language/request.h"

#include <cmath>

#include "language/compiled_stack.h"

namespace quantiverse {

Request::Reference::Reference(const DimValue& reference, Variables& variables) {
  const Ints2 ints = dim_unpack_ints2(reference);
  number = ints.i;
  component = ints.j;
  variable = variables.find_number(number);
}

double& Request::Reference::value() const {
  std::array<double, 3>& comp = variable->value.comp;
  return component == 2 ? comp[1] : component == 3 ? comp[2] : comp[0];
}

void Request::release_independents() {
  for (const Independent& independent : independents_) {
    if (independent.variable.variable != nullptr) independent.variable.variable->held = false;
  }
}

void Request::request_open(int independent, int dependent) {
  release_independents();
  independents_.assign(static_cast<std::size_t>(independent), {});
  dependents_.assign(static_cast<std::size_t>(dependent), {});
}

void Request::request_close() {
  request_open(0, 0);
  kind_ = RequestKind::kNone;
}

void Request::begin_call() {
  independents_.clear();
  dependents_.clear();
  objective_sign_ = 1.0;
}

void Request::request_set_independent(int index, const DimValue& reference, Variables& variables) {
  const Reference variable(reference, variables);
  independents_[static_cast<std::size_t>(index)].variable = variable;
  if (variable.variable != nullptr) variable.variable->held = true;
}

void Request::request_set_dependent(int index, const DimValue& reference, Variables& variables) {
  dependents_[static_cast<std::size_t>(index)] = Reference(reference, variables);
}

void Request::request_check(Variables& variables, TextBuf& err) const {
  for (const Independent& independent : independents_) {
    (void)variables.getvar_by_num(independent.variable.number, err);
    if (!err.is_empty_text()) return;
  }
  for (const Reference& dependent : dependents_) {
    const DimValue value = variables.getvar_by_num(dependent.number, err);
    if (!value.vector || dependent.component != 0) continue;
    err.append_three("ERROR:  Dependent arg ", variables.varname_by_num(dependent.number, err),
                     " must be a scalar.\n");
  }
}

void Request::request_store_independent(int index, const DimValue& value, Variables& variables,
                                        TextBuf& err) const {
  variables.setvar_by_num(independents_[static_cast<std::size_t>(index)].variable.number, value,
                          err);
}

void Request::request_save() {
  for (Independent& independent : independents_) independent.value = independent.variable.value();
}

void Request::request_restore() const {
  for (const Independent& independent : independents_) {
    independent.variable.value() = independent.value;
  }
}

void Request::request_set_log_mode(bool enable) {
  for (Independent& independent : independents_) {
    const double value = independent.variable.value();
    independent.log_sign = 0;
    if (enable && value > 0.0) independent.log_sign = 1;
    if (enable && value < 0.0) independent.log_sign = -1;
  }
}

void Request::request_read_x(double* x) const {
  for (const Independent& independent : independents_) {
    const double value = independent.variable.value();
    *x = value;
    if (independent.log_sign == 1) *x = std::log(value);
    if (independent.log_sign == -1) *x = std::log(-value);
    ++x;
  }
}

void Request::write_x(const double* x) const {
  for (const Independent& independent : independents_) {
    double& value = independent.variable.value();
    value = *x;
    if (independent.log_sign == 1) value = std::exp(*x);
    if (independent.log_sign == -1) value = -std::exp(*x);
    ++x;
  }
}

void Request::read_f(double* f) const {
  for (const Reference& dependent : dependents_) *f++ = objective_sign_ * dependent.value();
}

}  // namespace quantiverse
