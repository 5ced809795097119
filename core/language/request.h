#pragma once

#include <cstdint>
#include <vector>

#include "language/variables.h"
#include "text/text_buf.h"

namespace quantiverse {

enum class RequestKind : std::uint8_t { kNone, kFunc, kSolve, kMin, kMax };

// What a request varies and what it watches, from the call of func, solve, fmin or fmax to the end
// of the replay that reports it. A variable comes with a component: 1 to 3, or 0 where none was
// named, which stands for the first.
class Request {
 public:
  // Starts over with tables of these sizes. Those of a request that was not closed are dropped.
  void request_open(int independent, int dependent);
  void request_close();
  // Forgets everything but the kind, which is kept from call to call: only a request that is
  // completed clears it.
  void begin_call();

  [[nodiscard]] RequestKind request_kind() const { return kind_; }
  void set_request_kind(RequestKind kind) { kind_ = kind; }

  // -1.0 while a maximum is sought as a minimum: what request_evaluate() gives is multiplied by it.
  [[nodiscard]] double objective_sign() const { return objective_sign_; }
  void set_objective_sign(double sign) { objective_sign_ = sign; }

  [[nodiscard]] int independent_count() const { return static_cast<int>(independents_.size()); }
  [[nodiscard]] int dependent_count() const { return static_cast<int>(dependents_.size()); }
  // `reference` is what the grammar has made of a variable's name.
  void request_set_independent(int index, const DimValue& reference, Variables& variables);
  void request_set_dependent(int index, const DimValue& reference, Variables& variables);
  // Are all variables there, and are the dependent ones scalars or components?
  void request_check(Variables& variables, TextBuf& err) const;

  // The whole of the variable, whatever component was named.
  void request_store_independent(int index, const DimValue& value, Variables& variables,
                                 TextBuf& err) const;
  // Remembers the independent components, and puts them back.
  void request_save();
  void request_restore() const;

  // Whether a solver works on a value itself or on the logarithm of its magnitude. With `enable`
  // the sign of each value is kept from then on; a zero has no logarithm and stays what it is.
  void request_set_log_mode(bool enable);
  // The independent components as a solver sees them, independent_count() numbers, and back.
  void request_read_x(double* x) const;
  void write_x(const double* x) const;
  // The dependent components, dependent_count() numbers, times the sign of the objective.
  void read_f(double* f) const;

 private:
  struct Reference {
    Reference() = default;
    Reference(const DimValue& reference, Variables& variables);
    [[nodiscard]] double& value() const;

    int number = 0;
    int component = 0;
    Variable* variable = nullptr;  // null if no variable has the number
  };
  struct Independent {
    Reference variable;
    int log_sign = 0;  // 1: the logarithm of the value, -1: of the negated value
    double value = 0.0;
  };
  void release_independents();

  RequestKind kind_ = RequestKind::kNone;
  double objective_sign_ = 1.0;
  std::vector<Independent> independents_;
  std::vector<Reference> dependents_;
};

}  // namespace quantiverse
