#include "builtins/request.h"

#include <cmath>

#include "builtins/arguments.h"
#include "language/evaluator.h"
#include "numerics/bracket_root.h"
#include "numerics/minimise.h"
#include "numerics/multiroot.h"
#include "text/vectors.h"

namespace quantiverse {
namespace {

constexpr int kMostBracketSteps = 600;
constexpr double kBracketGrowth = 2.0;
constexpr double kRootAccuracy = 1e-8;
constexpr int kMostLineSteps = 100;
constexpr double kMinimumTolerance = 1e-8;

bool may_start(const FunctionRow& row, const FunctionCall& call) {
  const Body& body = call.interpreter.body;
  if (!body.is_body_closed()) {
    refuse(call, "ERROR:  Function not defined.\n");
    return false;
  }
  if (body.is_defining_function()) {
    call.err.append_three("ERROR:  ", row.counted_as(),
                          "() cannot be called within a function definition.\n");
    call.stack.push_value(DimValue{});
    return false;
  }
  return check_arg_count(row, call.count, call.stack, call.err);
}

// The references on top of the stack, as many as the tables have places for.
void pop_independents(const FunctionCall& call) {
  Interpreter& interpreter = call.interpreter;
  Request& request = interpreter.request;
  for (int i = request.independent_count() - 1; i >= 0; --i) {
    request.request_set_independent(i, call.stack.pop_value(), interpreter.variables);
  }
}
void pop_dependents(const FunctionCall& call) {
  Interpreter& interpreter = call.interpreter;
  Request& request = interpreter.request;
  for (int i = request.dependent_count() - 1; i >= 0; --i) {
    request.request_set_dependent(i, call.stack.pop_value(), interpreter.variables);
  }
}

// Where an attempt starts.
bool prepare(Interpreter& interpreter, TextBuf& err) {
  Request& request = interpreter.request;
  request.request_check(interpreter.variables, err);
  if (!err.is_empty_text()) return false;
  request.request_save();
  request.request_set_log_mode(false);
  return true;
}
void start_again(Request& request, bool logarithmic, TextBuf& err) {
  err.clear_text();
  request.request_restore();
  request.request_set_log_mode(logarithmic);
}

Objective objective_of(Interpreter& interpreter) {
  return [&interpreter](const double* x, double* f, TextBuf& err) {
    request_evaluate(interpreter, x, f, err);
  };
}

double first_step(double x0) { return std::abs(x0) < 1.0 ? 0.1 : 0.1 * std::abs(x0); }

void replace(TextBuf& err, std::string_view message) {
  err.clear_text();
  err.append_text(message);
}

// No driver writes an answer to the variables: it is what the last evaluation has left there.
void solve_one_dimension(Interpreter& interpreter, TextBuf& err) {
  const Objective objective = objective_of(interpreter);
  double x0 = 0.0;
  interpreter.request.request_read_x(&x0);
  Bracket bracket;
  if (!bi_bracket_zero(objective, x0, first_step(x0), kMostBracketSteps, kBracketGrowth, bracket,
                       err)) {
    replace(err, "ERROR: No solution found.  Try a different initial independent value.\n");
    return;
  }
  zriddr(objective, bracket, kRootAccuracy, err);
}

enum class Method : std::uint8_t { kBroyden, kNewton };

// true: the solver accepts its last point. An error may be pending all the same.
bool solve_many_dimensions(Interpreter& interpreter, Method method, TextBuf& err) {
  const Request& request = interpreter.request;
  const int n = request.independent_count();
  const Objective objective = objective_of(interpreter);
  DoubleVector x = dvector(1, n);
  request.request_read_x(&x[1]);
  return method == Method::kBroyden ? broydn(objective, x, n, err) : newt(objective, x, n, err);
}

void minimise_one(Interpreter& interpreter, TextBuf& err) {
  const Objective objective = objective_of(interpreter);
  double x0 = 0.0;
  interpreter.request.request_read_x(&x0);
  const double dx = first_step(x0);
  Valley valley{x0, x0 + dx};
  if (!mnbrak(objective, valley, kMostLineSteps, err)) {
    replace(
        err,
        interpreter.request.objective_sign() == 1.0
            ? "ERROR: No minimum solution found.  Try a different initial independent value.\n"
            : "ERROR: No maximum solution found.  Try a different initial independent value.\n");
    return;
  }
  double xmin = 0.0;
  brent(objective, valley, dx * kMinimumTolerance, kMostLineSteps, xmin, err);
}

void minimise_request(Interpreter& interpreter, TextBuf& err) {
  const Request& request = interpreter.request;
  const int n = request.independent_count();
  if (n == 1) return minimise_one(interpreter, err);
  DoubleVector p = dvector(1, n);
  DoubleMatrix directions = dmatrix(1, n, 1, n);
  for (int i = 1; i <= n; ++i) directions[i][i] = 1.0;
  request.request_read_x(&p[1]);
  int iterations = 0;
  double least = 0.0;
  direction_set_minimise(objective_of(interpreter), p, directions, n, kMinimumTolerance, iterations,
                         least, err);
}

void seek(const FunctionRow& row, const FunctionCall& call, RequestKind kind) {
  if (!may_start(row, call)) return;
  Interpreter& interpreter = call.interpreter;
  Request& request = interpreter.request;
  TextBuf& err = call.err;
  const bool maximum = kind == RequestKind::kMax;
  if (maximum) request.set_objective_sign(-1.0);
  request.request_open(call.count - 1, 1);
  pop_independents(call);
  pop_dependents(call);
  call.stack.push_value(DimValue{});
  // The tables stay open then, and the sign of a maximum stays too.
  if (!prepare(interpreter, err)) return;

  minimise_request(interpreter, err);
  if (!err.is_empty_text() && (maximum || request.independent_count() == 1)) {
    start_again(request, true, err);
    minimise_request(interpreter, err);
  }
  if (!err.is_empty_text()) request.request_restore();
  if (maximum) request.set_objective_sign(1.0);
  if (err.is_empty_text()) {
    request.set_request_kind(kind);
  } else {
    request.request_close();
  }
}

void solve_one(Interpreter& interpreter, TextBuf& err) {
  Request& request = interpreter.request;
  solve_one_dimension(interpreter, err);
  if (err.is_empty_text()) return;
  start_again(request, true, err);
  solve_one_dimension(interpreter, err);
  if (!err.is_empty_text()) request.request_restore();
}

void solve_many(Interpreter& interpreter, TextBuf& err) {
  struct Attempt {
    bool logarithmic;
    Method method;
  };
  constexpr Attempt kAttempts[] = {{false, Method::kBroyden},
                                   {false, Method::kNewton},
                                   {true, Method::kBroyden},
                                   {true, Method::kNewton}};
  Request& request = interpreter.request;
  for (const Attempt& attempt : kAttempts) {
    start_again(request, attempt.logarithmic, err);
    if (solve_many_dimensions(interpreter, attempt.method, err) && err.is_empty_text()) return;
  }
  request.request_restore();
  replace(err, "ERROR:  Solve no solution found.\n");
}

}  // namespace

void call_func(const FunctionRow& row, const FunctionCall& call) {
  if (!may_start(row, call)) return;
  if (call.count % 2 != 0) return refuse(call, "ERROR:  func() requires an even number of args.\n");
  Interpreter& interpreter = call.interpreter;
  Request& request = interpreter.request;
  request.request_open(call.count / 2, 0);
  for (int i = call.count / 2 - 1; i >= 0; --i) {
    const DimValue value = call.stack.pop_value();
    request.request_set_independent(i, call.stack.pop_value(), interpreter.variables);
    request.request_store_independent(i, value, interpreter.variables, call.err);
  }
  request.set_request_kind(RequestKind::kFunc);
  call.stack.push_value(DimValue{});
}

void call_solve(const FunctionRow& row, const FunctionCall& call) {
  if (!may_start(row, call)) return;
  if (call.count % 2 != 0) {
    return refuse(call, "ERROR:  Solve() requires an even number of args.\n");
  }
  Interpreter& interpreter = call.interpreter;
  Request& request = interpreter.request;
  request.request_open(call.count / 2, call.count / 2);
  pop_independents(call);
  pop_dependents(call);
  call.stack.push_value(DimValue{});
  if (!prepare(interpreter, call.err)) return;
  if (request.independent_count() == 1) {
    solve_one(interpreter, call.err);
  } else {
    solve_many(interpreter, call.err);
  }
  // Without a solution too: the report then waits for the next statement that works.
  request.set_request_kind(RequestKind::kSolve);
}

void call_fmin(const FunctionRow& row, const FunctionCall& call) {
  seek(row, call, RequestKind::kMin);
}
void call_fmax(const FunctionRow& row, const FunctionCall& call) {
  seek(row, call, RequestKind::kMax);
}

}  // namespace quantiverse
