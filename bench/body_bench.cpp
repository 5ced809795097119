// Bodies: one evaluation as a solver makes it beside the same operations in muParser, and whole
// solves.

#include <muParser.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "allocations.h"
#include "builtins/function_table.h"
#include "language/evaluator.h"
#include "language/interpreter.h"
#include "measure.h"
#include "models.h"
#include "quantiverse/quantiverse.h"

namespace {

using namespace quantiverse;
using namespace quantiverse::bench;

constexpr double kEnoughSeconds = 0.1;
constexpr int kBatch = 1'000;  // evaluations
constexpr std::size_t kFuncLines = 1'000;

[[noreturn]] void give_up(const std::string& what) {
  std::fprintf(stderr, "body_bench: %s\n", what.c_str());
  std::exit(2);
}

// A model that has been read, with its request open: the state in which a solver finds it.
class OpenModel {
 public:
  explicit OpenModel(const Model& model) : text_(model_text(model)) {
    Cursor expptr(text_);
    TextBuf out;
    process_lines(interpreter_, "", expptr, out);
    const auto n = static_cast<int>(model.independent.size());
    Request& request = interpreter_.request;
    request.request_open(n, n);
    for (std::size_t i = 0; i < model.independent.size(); ++i) {
      const auto index = static_cast<int>(i);
      request.request_set_independent(index, reference(model.independent[i]), variables());
      request.request_set_dependent(index, reference(model.dependent[i]), variables());
    }
    request.request_check(variables(), err_);
    start_.resize(model.independent.size());
    request.request_read_x(start_.data());
    results_.resize(start_.size());
    evaluate(start_);
  }

  void evaluate(const std::vector<double>& x) {
    request_evaluate(interpreter_, x.data(), results_.data(), err_);
    if (!err_.is_empty_text()) give_up(std::string(err_.text()));
  }
  // The MKS number in a variable, as the last evaluation has left it.
  double number(const std::string& name) {
    const Variable* variable = variables().find_variable(name);
    return variable == nullptr ? NAN : variable->value.comp[0];
  }
  [[nodiscard]] const std::vector<double>& start() const { return start_; }
  [[nodiscard]] double result() const { return results_.back(); }
  [[nodiscard]] std::size_t operations() const { return interpreter_.body.program().ops().size(); }

 private:
  Variables& variables() { return interpreter_.variables; }
  DimValue reference(const std::string& name) {
    return make_variable_reference(variables().varnum_by_name(name, err_), 0);
  }

  std::string text_;
  Interpreter interpreter_{builtin_functions()};
  TextBuf err_;
  std::vector<double> start_;
  std::vector<double> results_;
};

// The same lines on plain doubles: compiled by muParser, all variables with the numbers that they
// have in `open`.
class MuParserModel {
 public:
  MuParserModel(const Model& model, OpenModel& open) {
    parser_.SetVarFactory(&MuParserModel::new_variable, this);
    std::string lines;
    for (const std::string& line : model.lines)
      lines.append(lines.empty() ? "" : ", ").append(line);
    parser_.SetExpr(lines);
    parser_.Eval();
    for (const auto& [name, place] : parser_.GetVar()) *place = open.number(name);
    independent_ = parser_.GetVar().at(model.independent.front());
  }

  // The value of the last line, for a model of one variable.
  double evaluate(double x) {
    *independent_ = x;
    return parser_.Eval();
  }

 private:
  static double* new_variable(const char*, void* self) {
    return &static_cast<MuParserModel*>(self)->numbers_.emplace_back(1.0);
  }

  std::deque<double> numbers_;
  mu::Parser parser_;
  double* independent_ = nullptr;
};

// Seconds that evaluate(x) takes, with an x that is never the last one again.
double seconds_per_evaluation(const std::function<void(double x)>& evaluate) {
  const auto batch = [&evaluate] {
    for (int i = 0; i < kBatch; ++i) evaluate(1.0 + i * 1e-3);
  };
  return seconds_per_call(batch, kEnoughSeconds) / kBatch;
}

double allocations_per_evaluation(OpenModel& open) {
  const std::size_t before = allocations();
  for (int i = 0; i < kBatch; ++i) open.evaluate(open.start());
  return static_cast<double>(allocations() - before) / kBatch;
}

// A text that has to work, through the door.
void interpret(const std::string& text) {
  if (interpret_dimensional_input_lines(text).find("ERROR") != std::string::npos) {
    give_up("an error in a model");
  }
}

// The model, asked with another value on each line.
std::string func_text(const Model& model) {
  std::string text = model_text(model);
  for (std::size_t i = 0; i < kFuncLines; ++i) {
    text += "func(" + model.independent[0] + ", " +
            std::to_string(1.0 + 1e-3 * static_cast<double>(i)) + " m/s)\n";
  }
  return text;
}

void print_speed(const char* what, double seconds) {
  std::printf("| %s | %.1f | %.2f |\n", what, seconds * 1e9, 1e-6 / seconds);
}

// The time of one evaluation in that of muParser's.
double compare_evaluations(OpenModel& open, int repetitions) {
  const Model model = tank_outlet();
  MuParserModel plain(model, open);
  const std::string lines = func_text(model);
  std::vector<double> x(1);
  for (const double v : {1.0, 2.5, 30.0}) {
    x[0] = v;
    open.evaluate(x);
    if (std::fabs(plain.evaluate(v) / open.result() - 1.0) > 1e-12) give_up("muParser disagrees");
  }

  double sum = 0.0;
  std::vector<double> theirs;
  std::vector<double> ours;
  std::vector<double> by_line;
  std::vector<double> ratios;
  for (int i = 0; i < repetitions; ++i) {
    theirs.push_back(seconds_per_evaluation([&](double v) { sum += plain.evaluate(v); }));
    ours.push_back(seconds_per_evaluation([&](double v) {
      x[0] = v;
      open.evaluate(x);
      sum += open.result();
    }));
    by_line.push_back(seconds_per_call([&lines] { interpret(lines); }, kEnoughSeconds) /
                      kFuncLines);
    ratios.push_back(ours.back() / theirs.back());
  }
  if (!std::isfinite(sum)) give_up("an evaluation is no number");
  std::printf("| A body of ten operations | nanoseconds | million per second |\n|---|---:|---:|\n");
  print_speed("muParser, plain doubles", median(theirs));
  print_speed("quantiverse, an evaluation of a solver", median(ours));
  print_speed("quantiverse, a line with `func` and its report", median(by_line));
  std::printf("\n");
  return median(ratios);
}

// How often the functions of a body have been called.
std::size_t body_calls = 0;

void count_call(const FunctionCall& call) {
  static const int solve = lookup_function_name("solve").number;
  if (call.number != solve) ++body_calls;
  call_func_by_number(call);
}

// The calls of reading the body, once at first and once for each report, are no evaluations.
double evaluations_per_solve(const Model& model, std::size_t solves) {
  FunctionSet counting = builtin_functions();
  counting.call_func_by_number = count_call;
  Interpreter interpreter(counting);
  body_calls = 0;
  TextBuf output;
  interpreter.interpret(solves_text(model, solves), output);
  const std::size_t runs = body_calls / static_cast<std::size_t>(model.calls);
  return static_cast<double>(runs - 1 - solves) / static_cast<double>(solves);
}

double seconds_per_solve(const Model& model, std::size_t solves) {
  const std::string text = solves_text(model, solves);
  return seconds_per_call([&text] { interpret(text); }, kEnoughSeconds) /
         static_cast<double>(solves);
}

double seconds_at_start(OpenModel& open) {
  return seconds_per_evaluation([&open](double) { open.evaluate(open.start()); });
}

void print_solves(int repetitions) {
  struct Solves {
    const char* name;
    Model model;
    std::size_t count;
  };
  const Solves all[] = {{"1,000 solves in one variable", tank_outlet(), 1'000},
                        {"200 solves in four variables", three_reservoirs(), 200}};
  std::printf(
      "| A text of | milliseconds | microseconds each | evaluations each |\n"
      "|---|---:|---:|---:|\n");
  for (const Solves& solves : all) {
    std::vector<double> seconds;
    for (int i = 0; i < repetitions; ++i) {
      seconds.push_back(seconds_per_solve(solves.model, solves.count));
    }
    const double each = median(seconds);
    std::printf("| %s | %.1f | %.1f | %.1f |\n", solves.name,
                each * static_cast<double>(solves.count) * 1e3, each * 1e6,
                evaluations_per_solve(solves.model, solves.count));
  }
  std::printf("\n");
}

// How a solve grows with its number of variables.
constexpr int kVariables[] = {2, 4, 8, 16, 32};

void print_growth(std::deque<OpenModel>& systems, int repetitions) {
  constexpr std::size_t kSolves = 10;
  std::printf(
      "| Tridiagonal system, variables | operations of its program | nanoseconds per evaluation | "
      "evaluations per solve | microseconds per solve | of it in evaluations |\n"
      "|---:|---:|---:|---:|---:|---:|\n");
  for (std::size_t i = 0; i < systems.size(); ++i) {
    const Model model = broyden_tridiagonal(kVariables[i]);
    std::vector<double> evaluation;
    std::vector<double> solve;
    for (int j = 0; j < repetitions; ++j) {
      evaluation.push_back(seconds_at_start(systems[i]));
      solve.push_back(seconds_per_solve(model, kSolves));
    }
    const double evaluations = evaluations_per_solve(model, kSolves);
    std::printf("| %d | %zu | %.0f | %.0f | %.1f | %.0f %% |\n", kVariables[i],
                systems[i].operations(), median(evaluation) * 1e9, evaluations, median(solve) * 1e6,
                100.0 * evaluations * median(evaluation) / median(solve));
  }
  std::printf("\n");
}

// The time of an operation in the large body, in that of one in the small.
double growth_of_operation(OpenModel& small, OpenModel& large, int repetitions) {
  const auto per_operation = [](OpenModel& open) {
    return seconds_at_start(open) / static_cast<double>(open.operations());
  };
  std::vector<double> ratios;
  for (int i = 0; i < repetitions; ++i) {
    const double in_small = per_operation(small);
    ratios.push_back(per_operation(large) / in_small);
  }
  return median(ratios);
}

}  // namespace

int main(int argc, char** argv) {
  const int repetitions = argc > 1 ? std::atoi(argv[1]) : 7;
  if (repetitions < 1) {
    std::fprintf(stderr, "usage: body_bench [REPETITIONS]\n");
    return 2;
  }
  OpenModel ten(tank_outlet());
  std::deque<OpenModel> systems;
  for (const int n : kVariables) systems.emplace_back(broyden_tridiagonal(n));
  OpenModel& small = systems.front();
  OpenModel& large = systems.back();

  const double beside_muparser = compare_evaluations(ten, repetitions);
  print_solves(repetitions);
  print_growth(systems, repetitions);

  TargetTable table("An evaluation of a body");
  table.at_most("ten operations, time of muParser", beside_muparser, 15.0);
  table.at_most("ten operations, allocations once warm", allocations_per_evaluation(ten), 0.0);
  table.at_most("32 equations, allocations once warm", allocations_per_evaluation(large), 0.0);
  table.at_most("an operation among 32 equations, time of one among 2",
                growth_of_operation(small, large, repetitions), 1.3);
  return table.exit_status();
}
