#include "language/expression.h"

#include "language/arithmetic.h"
#include "quantity/unit_dictionary.h"
#include "quantity/unit_expression.h"
#include "text/scanner.h"

namespace quantiverse {
namespace {

constexpr int kMostRepeats = 10;

bool fail(Parse& parse, std::string_view message) {
  parse.err.append_text(message);
  return false;
}

// An operator was stepped over: is there something for it?
bool is_operand_ahead(Parse& parse) {
  Cursor ahead = parse.expptr;
  skip_blanks_and_comments(ahead);
  return !is_end_of_statement(ahead) || fail(parse, "ERROR: Math expression incomplete.\n");
}

bool may_start_unit(char c) {
  return is_name_start(c) || c == '%' || c == '*' || c == '/' || c == '(';
}

// Has the try at this place been made already, from an operator further in front?
bool is_known_to_fail(const FailedUnitRun& run, const char* position) {
  if (position <= run.first || position >= run.factor) return false;
  return run.last_slash >= position ? run.failed_below : run.failed_above;
}

void note_failed_run(FailedUnitRun& run, const Cursor& start) {
  if (start.peek() != '*' && start.peek() != '/') return;
  if (start.position <= run.first || start.position >= run.factor) {
    run = {start.position, start.position, nullptr, false, false};
    Cursor ahead = start;
    for (char c = ahead.peek(); c == '*' || c == '/'; c = ahead.peek()) {
      if (c == '/') run.last_slash = ahead.position;
      ahead.step();
      skip_blanks_and_comments(ahead);
    }
    run.factor = ahead.position;
  }
  (run.last_slash >= start.position ? run.failed_below : run.failed_above) = true;
}

enum class UnitTry { kNone, kTaken, kError };

// Gives the value on top of the stack the unit at the cursor, if there is one.
[[gnu::noinline]] UnitTry try_unit(Parse& parse) {
  Interpreter& interpreter = parse.interpreter;
  const Cursor start = parse.expptr;
  if (is_known_to_fail(interpreter.line.failed_run, start.position)) return UnitTry::kNone;
  UnitDef unit;
  if (!parse_unit_expression(interpreter.units, parse.expptr, unit, parse.err)) {
    return parse.err.is_empty_text() ? UnitTry::kNone : UnitTry::kError;
  }
  if (!parse.err.is_empty_text()) {  // a good start that goes wrong further on is no unit
    parse.err.clear_text();
    note_failed_run(interpreter.line.failed_run, start);
    return UnitTry::kNone;
  }
  parse.compiled.value_stack.push_unit(unit);
  parse.compiled.program.emit_op(OpCode::OP_PUSH_UNIT, unit);
  stack_assign_units(parse.compiled.value_stack, parse.err);
  if (parse.err.is_empty_text()) {
    parse.compiled.program.emit_op(OpCode::OP_UNIT_ASSIGN);
    return UnitTry::kTaken;
  }
  if (parse.err.text() == kNeedsDimensionless) {
    parse.err.clear_text();
    parse.err.append_text("ERROR: Units assignment '");
    parse.err.append_range(parse.value_end, parse.expptr.position);
    parse.err.append_text("' requires dimensionless value before it.\n");
  }
  return UnitTry::kError;
}

// The units and powers behind a primary. A "^" is only seen directly behind the value: blanks
// that this routine skips on the way to a unit are given back.
bool is_unit_exp_or_null(Parse& parse) {
  for (;;) {
    const Cursor start = parse.expptr;
    skip_blanks_and_comments(parse.expptr);
    if (is_end_of_statement(parse.expptr)) return true;
    if (may_start_unit(parse.expptr.peek())) {
      const UnitTry unit = try_unit(parse);
      if (unit == UnitTry::kError) return false;
      if (unit == UnitTry::kTaken) {
        parse.value_end = parse.expptr.position;
        continue;
      }
    }
    parse.expptr = start;
    if (!accept_char('^', parse.expptr)) return true;
    if (!is_operand_ahead(parse) || !is_num_paren_var_func_or_null(parse)) return false;
    stack_exponentiate(parse.compiled.value_stack, parse.interpreter.units, parse.err);
    if (!parse.err.is_empty_text()) return false;
    parse.compiled.program.emit_op(OpCode::OP_POW);
  }
}

bool is_mult(Parse& parse) {
  return is_num_paren_var_func_or_null(parse) && is_unit_exp_or_null(parse);
}

bool is_more_mult_or_null(Parse& parse) {
  for (;;) {
    skip_blanks_and_comments(parse.expptr);
    const char operation = parse.expptr.peek();
    if (operation != '*' && operation != '/') return true;
    parse.expptr.step();
    if (!is_operand_ahead(parse) || !is_mult(parse)) return false;
    if (operation == '*') {
      stack_multiply(parse.compiled.value_stack, parse.err);
    } else {
      stack_divide(parse.compiled.value_stack, parse.err);
    }
    if (!parse.err.is_empty_text()) return false;
    parse.compiled.program.emit_op(operation == '*' ? OpCode::OP_MUL : OpCode::OP_DIV);
  }
}

bool is_plus(Parse& parse) { return is_mult(parse) && is_more_mult_or_null(parse); }

bool is_known_name(Parse& parse, std::string_view name) {
  Interpreter& interpreter = parse.interpreter;
  return interpreter.functions.lookup_function_name(name).number != 0 ||
         interpreter.variables.find_variable(name) != nullptr ||
         is_base_unit_name(interpreter.units.users, name);
}

// Looks for a name that means nothing from the cursor to the end of the statement.
// true: there is one, and `err` names it.
bool report_undefined_name(Parse& parse) {
  Cursor ahead = parse.expptr;
  skip_blanks_and_comments(ahead);
  if (is_end_of_statement(ahead)) {
    parse.err.append_text("ERROR:  Unexpected end of input.\n");
    return true;
  }
  while (!is_end_of_statement(ahead)) {
    const std::string_view name = scan_name(ahead);
    if (name.empty()) {
      ahead.step();
    } else if (!is_known_name(parse, name)) {
      parse.err.append_three("ERROR: '", name, "' undefined.\n");
      return true;
    }
    skip_blanks(ahead);
  }
  return false;
}

// Words the error of what can't follow a sum.
[[gnu::noinline]] void report_continuation(Parse& parse) {
  const Cursor here = parse.expptr;
  Cursor end = here;
  UnitDef unit;
  const bool is_unit = parse_unit_expression(parse.interpreter.units, end, unit, parse.err);
  parse.err.clear_text();
  if (is_unit) {
    parse.err.append_text("ERROR: Unit assignment error -- value before '");
    parse.err.append_until_any(here.rest(), " \t/*^+-\n");
    parse.err.append_text("' must be dimensionless.\n");
  } else if (!report_undefined_name(parse)) {
    end = here;
    skip_to_end_of_statement(end);
    parse.err.append_three("ERROR: Syntax error or undefined variable near or in '",
                           here.until(end), "'.\n");
  }
}

bool is_more_plus_or_null(Parse& parse) {
  for (;;) {
    skip_blanks_and_comments(parse.expptr);
    if (is_end_of_statement(parse.expptr)) return true;
    const char operation = parse.expptr.peek();
    // These are all that may follow a sum inside brackets.
    if (operation == ')' || operation == ',' || operation == ']') return true;
    if (operation != '+' && operation != '-') {
      report_continuation(parse);
      return false;
    }
    parse.expptr.step();
    if (!is_operand_ahead(parse) || !is_plus(parse)) return false;
    if (operation == '+') {
      stack_add(parse.compiled.value_stack, parse.interpreter.units, parse.err);
    } else {
      stack_subtract(parse.compiled.value_stack, parse.interpreter.units, parse.err);
    }
    if (!parse.err.is_empty_text()) return false;
    parse.compiled.program.emit_op(operation == '+' ? OpCode::OP_ADD : OpCode::OP_SUB);
  }
}

bool compile_rhs_here(Parse& parse) { return is_plus(parse) && is_more_plus_or_null(parse); }

}  // namespace

bool compile_rhs(Parse& parse) {
  RepeatGuard& guard = parse.interpreter.guard;
  // Looked at before the count is reset, so that once it has tripped, every later expression of
  // the call ends here too.
  if (guard.repeat_count > kMostRepeats) {
    return fail(parse,
                "ERROR: Cannot parse line -- check nesting of parentheses, brackets, "
                "and commas.\n");
  }
  if (guard.last_position != parse.expptr.position) {
    guard = {parse.expptr.position, 0};
  } else {
    ++guard.repeat_count;
  }
  StackSpace& stack = parse.interpreter.units.stack;
  if (stack.is_low()) {
    return stack.call_on_fresh_stack([&parse] { return compile_rhs_here(parse); });
  }
  return compile_rhs_here(parse);
}

}  // namespace quantiverse
