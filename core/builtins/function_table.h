#pragma once

#include <span>
#include <string_view>

#include "language/function_set.h"

// The built-in functions: one row each, found by name or by number.
namespace quantiverse {

inline constexpr int kFunctionCount = 89;

struct FunctionRow;
// Pops its arguments and pushes one value. REQUIRES: `err` is empty, and the number of arguments
// is right; only the functions of variable names look at it themselves.
using Handler = void (*)(const FunctionRow& row, const FunctionCall& call);
// What a handler of plain numbers computes from them, in their order. A routine may put a message
// in `err`; its result is then of no interest.
using Routine = double (*)(const double* x, TextBuf& err);

struct FunctionRow {
  int number;
  const char* name;
  int kind;       // how the grammar reads the arguments, see FunctionSet::Kind
  int arguments;  // how many it takes
  bool exact;     // false: that many or more
  Handler handler;
  Routine routine = nullptr;    // for the handlers of plain.h
  const char* alias = nullptr;  // the name it goes by in messages about its count, if another

  [[nodiscard]] const char* counted_as() const { return alias != nullptr ? alias : name; }
};

// Row i has number i + 1.
std::span<const FunctionRow> function_rows();

FunctionSet::Function lookup_function_name(std::string_view name);

// Checks the number of arguments and runs the handler.
// err: a wrong count, or a number without a function.
void call_func_by_number(const FunctionCall& call);

// Is `given` the right number of arguments for `row`? If not, they are thrown away, a clear value
// takes their place, and `err` says how many there should be.
bool check_arg_count(const FunctionRow& row, int given, ValueStack& stack, TextBuf& err);

// The table as the language takes it.
const FunctionSet& builtin_functions();

}  // namespace quantiverse
