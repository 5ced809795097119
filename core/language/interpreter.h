#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "language/body.h"
#include "language/compiled_stack.h"
#include "language/function_set.h"
#include "language/request.h"
#include "language/variables.h"
#include "quantity/units.h"
#include "text/cursor.h"
#include "text/text_buf.h"

namespace quantiverse {

// Stops an expression that is read again and again at one place: the argument loops go round
// without moving at a stray closing bracket.
struct RepeatGuard {
  const char* last_position = nullptr;
  int repeat_count = 0;
};

// A run of operators in front of a unit that was tried as a unit expression and given up because
// of a later error. The grammar then takes the operators one by one and would try again behind
// each; what it would find is known as long as the try starts within the run.
struct FailedUnitRun {
  const char* first = nullptr;       // where the first try started
  const char* factor = nullptr;      // the first character that is no operator
  const char* last_slash = nullptr;  // decides on which side of the line the factors stand
  bool failed_above = false;
  bool failed_below = false;
};

// What a line works on. It is kept from line to line for its storage alone.
struct LineScratch {
  CompiledStack compiled;
  TextBuf err;
  TextBuf result;  // the outputs
  FailedUnitRun failed_run;
  // The target that was looked ahead for and found to be a good name: not looked up again.
  const char* good_target = nullptr;

  void begin_line();
};

// All state that a call works on. A thread uses one at a time; different interpreters never meet.
struct Interpreter {
  explicit Interpreter(const FunctionSet& function_set) : functions(function_set) {}

  // Runs a text, one statement a line, and appends the echo of every line with its result or error.
  // Every table is fresh; of an earlier call only the kind of a pending request is seen.
  // A NUL ends the text.
  void interpret(std::string_view text, TextBuf& out);

  const FunctionSet& functions;
  Variables variables;
  Units units;
  RepeatGuard guard;
  Body body;
  // Its kind is kept from call to call: a solve that failed at the end of a text is still to be
  // reported by the first statement of the next one that works.
  Request request;
  bool replaying = false;  // the body is being read again
  LineScratch line;
  LineScratch outer_line;                // the line that asked for the replay, meanwhile
  std::vector<ValueStack> spare_stacks;  // for evaluations, which can nest

 private:
  void begin_call();
};

// What the routines of the grammar share.
struct Parse {
  Interpreter& interpreter;
  Cursor& expptr;
  CompiledStack& compiled;
  TextBuf& err;
  const char* value_end = nullptr;  // where the primary that was read last ends
};

// The lines from the cursor to its stop, each as process_an_expression() takes it.
void process_lines(Interpreter& interpreter, std::string_view default_name, Cursor& expptr,
                   TextBuf& out);

// One line, with the cursor at its start: comment block, blank line or statement, up to its
// newline. `default_name` is the prefix of the label, and `line_counter` numbers the statements
// that worked.
void process_an_expression(Interpreter& interpreter, std::string_view default_name,
                           int& line_counter, Cursor& expptr, TextBuf& out);

}  // namespace quantiverse
