#include "language/arithmetic.h"
#include "language/expression.h"
#include "quantity/unit_expression.h"
#include "text/numbers.h"
#include "text/scanner.h"

// The primaries of an expression: numbers, parentheses, vectors, variables, calls. What stands
// on the stack while an operand is being read is kept small, since these routines nest as deep as
// the text does; the parts with values of their own are routines of their own.
namespace quantiverse {
namespace {

using Function = FunctionSet::Function;

bool fail(Parse& parse, std::string_view message) {
  parse.err.append_text(message);
  return false;
}

bool fail(Parse& parse, std::string_view before, std::string_view name, std::string_view after) {
  parse.err.append_three(before, name, after);
  return false;
}

// The value ends at the cursor.
bool ends_here(Parse& parse) {
  parse.value_end = parse.expptr.position;
  return true;
}

bool handle_negate_flag(bool negate, Parse& parse) {
  if (!negate) return true;
  stack_negate(parse.compiled.value_stack, parse.err);
  if (!parse.err.is_empty_text()) return false;
  parse.compiled.program.emit_op(OpCode::OP_NEG);
  return true;
}

[[gnu::noinline]] void push_number(Parse& parse, double x) {
  DimValue value;
  value.comp[0] = x;
  parse.compiled.value_stack.push_value(value);
  parse.compiled.program.emit_number(x);
}

[[gnu::noinline]] bool build_vector(Parse& parse, int count) {
  Program& program = parse.compiled.program;
  program.emit_op(OpCode::OP_PUSH_VALUE, make_function_descriptor(0, 0, count));
  program.emit_op(OpCode::OP_VECTOR);
  stack_build_vector(count, parse.compiled.value_stack, parse.err);
  return parse.err.is_empty_text();
}

[[gnu::noinline]] bool call_function(Parse& parse, Function function, int count) {
  Program& program = parse.compiled.program;
  program.emit_op(OpCode::OP_PUSH_VALUE,
                  make_function_descriptor(function.number, function.kind, count));
  program.emit_op(OpCode::OP_CALL);
  parse.interpreter.functions.call_func_by_number(
      {parse.interpreter, function.number, count, parse.compiled.value_stack, parse.err});
  return parse.err.is_empty_text();
}

// REQUIRES: the cursor stands on the "[".
bool is_vector(Parse& parse) {
  constexpr std::string_view kUnreadable = "ERROR: Could not process line.\n";
  parse.expptr.step();
  int count = 0;
  bool closed = accept_char(']', parse.expptr);
  while (!closed) {
    // An empty place counts as a component.
    if (!compile_rhs(parse)) return false;
    ++count;
    skip_blanks_and_comments(parse.expptr);
    closed = accept_char(']', parse.expptr);
    if (!closed && !accept_char(',', parse.expptr)) return fail(parse, kUnreadable);
    if (count > 3) return fail(parse, "ERROR: vectors can only have 3 components.\n");
  }
  return build_vector(parse, count);
}

// REQUIRES: the cursor stands on the "(".
bool is_parenthesis(Parse& parse) {
  parse.expptr.step();
  if (!compile_rhs(parse)) return false;
  skip_blanks_and_comments(parse.expptr);
  return accept_char(')', parse.expptr) || fail(parse, "ERROR: Missing closing parenthesis.\n");
}

bool fail_unfinished_list(Parse& parse, std::string_view name) {
  return fail(parse, "ERROR: Argument list for function '", name, "' not correctly finished.\n");
}

// The index behind a vector's name. It is an expression, or a list of any length that `component`
// then judges. REQUIRES: the cursor stands on the "[", the vector is on the stack.
bool is_component_access(Parse& parse, std::string_view name) {
  parse.expptr.step();
  int count = 1;
  bool closed = accept_char(']', parse.expptr);
  while (!closed) {
    skip_blanks_and_comments(parse.expptr);
    if (accept_char(']', parse.expptr)) break;
    if (!compile_rhs(parse)) return false;
    ++count;
    skip_blanks_and_comments(parse.expptr);
    closed = accept_char(']', parse.expptr);
    if (closed) break;
    accept_char(',', parse.expptr);
    if (is_end_of_statement(parse.expptr)) return fail_unfinished_list(parse, name);
  }
  return call_function(parse, {parse.interpreter.functions.component, FunctionSet::kValues}, count);
}

// Pushes a variable and the blanks behind its name, which is why `x ^ 2` works. The value still
// ends with the name.
bool is_variable(Parse& parse, std::string_view name) {
  const char* const name_end = parse.expptr.position;
  skip_blanks_and_comments(parse.expptr);
  Variable* variable = parse.interpreter.variables.find_variable(name);
  if (variable == nullptr) return fail(parse, "ERROR: '", name, "' undefined.\n");
  const bool indexed = parse.expptr.peek() == '[';
  if (indexed && !variable->value.vector) {
    return fail(parse, "ERROR:  Cannot take a component of '", name, " -- it is not a vector.\n");
  }
  parse.compiled.value_stack.push_value(variable->value);
  parse.compiled.program.emit_op(OpCode::OP_PUSH_VAR, variable);
  if (indexed) return is_component_access(parse, name) && ends_here(parse);
  parse.value_end = name_end;
  return true;
}

// The unit behind the comma of `Number(5 ft, in)`.
[[gnu::noinline]] bool is_number_unit(Parse& parse) {
  UnitDef unit;
  const bool read = parse_unit_expression(parse.interpreter.units, parse.expptr, unit, parse.err);
  const bool clean = parse.err.is_empty_text();
  parse.err.clear_text();
  if (!read) return fail(parse, "ERROR: Second argument to Number() must be a units expression.\n");
  if (!clean) {
    return fail(parse, "ERROR: Second argument to Number() must be a units expression. (1)\n");
  }
  parse.compiled.value_stack.push_unit(unit);
  parse.compiled.program.emit_op(OpCode::OP_PUSH_UNIT, unit);
  stack_to_number(parse.compiled.value_stack, parse.err);
  if (!parse.err.is_empty_text()) {
    parse.err.clear_text();
    return fail(parse, "ERROR: Second argument to Number() is incompatible.\n");
  }
  parse.compiled.program.emit_op(OpCode::OP_TO_NUMBER);
  return true;
}

// `Number` has a parser of its own, since its second argument is a unit. By the time of the call
// the value is converted, and the call has one argument.
bool is_number_call(Parse& parse, std::string_view name, Function function) {
  skip_blanks_and_comments(parse.expptr);
  if (!accept_char('(', parse.expptr)) {
    return fail(parse, "ERROR: Function '", name, "' must be followed by parenthesis.\n");
  }
  skip_blanks_and_comments(parse.expptr);
  if (accept_char(')', parse.expptr)) {
    return fail(parse, "ERROR: Function ", name, " requires one or two arguments, not zero.\n");
  }
  if (!compile_rhs(parse)) return false;
  skip_blanks_and_comments(parse.expptr);
  // A closing parenthesis behind the first argument isn't insisted on.
  if (!accept_char(')', parse.expptr) && accept_char(',', parse.expptr)) {
    if (!is_number_unit(parse)) return false;
    skip_blanks_and_comments(parse.expptr);
    if (!accept_char(')', parse.expptr)) {
      return fail(parse, "ERROR: Number() cannot have more than two arguments.\n");
    }
  }
  return call_function(parse, function, 1);
}

// An argument that names a variable, or one component of it.
bool is_variable_argument(Parse& parse, std::string_view function_name) {
  const std::string_view name = scan_name(parse.expptr);
  if (name.empty()) {
    return fail(parse, "ERROR: Function '", function_name, "' requires variable name arguments.\n");
  }
  const int component = scan_component_suffix(parse.expptr);
  const int number = parse.interpreter.variables.varnum_by_name(name, parse.err);
  if (!parse.err.is_empty_text()) return false;
  const DimValue reference = make_variable_reference(number, component);
  parse.compiled.value_stack.push_value(reference);
  parse.compiled.program.emit_op(OpCode::OP_PUSH_VALUE, reference);
  return true;
}

// The arguments up to and with the ")". No comma is insisted on between them: the expression
// stops at what can't follow it.
bool are_arguments(Parse& parse, std::string_view name, Function function, int& count) {
  count = 0;
  for (;;) {
    skip_blanks_and_comments(parse.expptr);
    if (accept_char(')', parse.expptr)) return true;
    if (function.kind != FunctionSet::kValues) {
      if (!is_variable_argument(parse, name)) return false;
      ++count;
    }
    if (function.kind == FunctionSet::kVariablesAndValues) {
      skip_blanks_and_comments(parse.expptr);
      if (!accept_char(',', parse.expptr)) {
        return fail(parse, "ERROR: Function arg for '", name,
                    "' must alternate variable, value, variable, value, etc.\n");
      }
    }
    if (function.kind != FunctionSet::kVariables) {
      if (!compile_rhs(parse)) return false;
      ++count;
    }
    skip_blanks_and_comments(parse.expptr);
    if (accept_char(')', parse.expptr)) return true;
    accept_char(',', parse.expptr);
    if (is_end_of_statement(parse.expptr)) return fail_unfinished_list(parse, name);
  }
}

bool is_function_call(Parse& parse, std::string_view name, Function function) {
  skip_blanks_and_comments(parse.expptr);
  if (!accept_char('(', parse.expptr)) {
    return fail(parse, "ERROR: Function '", name, "' must be followed by parentheses.\n");
  }
  int count = 0;
  return are_arguments(parse, name, function, count) && call_function(parse, function, count);
}

bool is_name(Parse& parse, bool negate) {
  const std::string_view name = scan_name(parse.expptr);
  // A character that starts no primary is nothing, and so is a sign in front of it.
  if (name.empty()) return ends_here(parse);
  const Function function = parse.interpreter.functions.lookup_function_name(name);
  if (function.number == 0) return is_variable(parse, name) && handle_negate_flag(negate, parse);
  const bool called = function.number == parse.interpreter.functions.number
                          ? is_number_call(parse, name, function)
                          : is_function_call(parse, name, function);
  return called && ends_here(parse) && handle_negate_flag(negate, parse);
}

}  // namespace

bool is_num_paren_var_func_or_null(Parse& parse) {
  skip_blanks_and_comments(parse.expptr);
  if (is_end_of_statement(parse.expptr)) return ends_here(parse);
  double number = 0.0;
  if (scan_number(parse.expptr, number)) {
    push_number(parse, number);
    return ends_here(parse);
  }
  const bool negate = parse.expptr.peek() == '-';
  if (negate || parse.expptr.peek() == '+') {
    parse.expptr.step();
    skip_blanks_and_comments(parse.expptr);
  }
  const char c = parse.expptr.peek();
  if (c == '[') return is_vector(parse) && ends_here(parse) && handle_negate_flag(negate, parse);
  if (c == '(') {
    return is_parenthesis(parse) && ends_here(parse) && handle_negate_flag(negate, parse);
  }
  return is_name(parse, negate);
}

}  // namespace quantiverse
