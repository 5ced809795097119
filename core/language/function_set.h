#pragma once

#include "language/compiled_stack.h"
#include "text/cursor.h"
#include "text/text_buf.h"

namespace quantiverse {

struct Interpreter;

// What a call hands to a handler: the arguments lie on `stack`, the last on top. The handler pops
// them all and pushes exactly one value, a clear one on an error, with the message in `err`; what
// lies below it is then of no interest.
// REQUIRES: `err` is empty.
struct FunctionCall {
  Interpreter& interpreter;
  int number;
  int count;  // of arguments
  ValueStack& stack;
  TextBuf& err;
};

// The built-in functions as the language sees them: it is given a set and doesn't know what is
// in it, apart from the two functions that its own grammar calls.
struct FunctionSet {
  // How the arguments of a function are written.
  enum Kind : int { kValues = 0, kVariables = 1, kVariablesAndValues = -1 };
  struct Function {
    int number = 0;  // 0: no function
    int kind = kValues;
  };

  // The function of exactly this name, whatever its case.
  Function (*lookup_function_name)(std::string_view name);
  // Runs a function; `kind` needs no second look by then.
  void (*call_func_by_number)(const FunctionCall& call);
  int component;  // `x[2]` calls it
  int number;     // its second argument is a unit
};

}  // namespace quantiverse
