#include "language/statement.h"

#include "language/expression.h"
#include "language/replay.h"
#include "language/result_text.h"
#include "language/special_statement.h"
#include "text/scanner.h"

namespace quantiverse {
namespace {

// The left side of an assignment, up to and with its "=".
struct Target {
  std::string_view name;
  int component = 0;  // 0 for the whole variable
};

bool scan_target(Cursor& expptr, Target& target) {
  Backtrack back(expptr);
  skip_blanks_and_comments(expptr);
  target.name = scan_name(expptr);
  if (target.name.empty()) return false;
  target.component = scan_component_suffix(expptr);
  skip_blanks_and_comments(expptr);
  return accept_char('=', expptr) && back.accept();
}

// Looks ahead for the name that a result is shown with. `held`: the assignment will not change
// the variable.
std::string_view probe_assignment_target(Interpreter& interpreter, Cursor expptr, bool& held) {
  Target target;
  if (!scan_target(expptr, target)) return {};
  if (interpreter.request.independent_count() != 0) {
    const Variable* variable = interpreter.variables.find_variable(target.name);
    held = variable != nullptr && variable->held;
  }
  TextBuf ignored;
  const bool okay =
      is_varname_okay(target.name, interpreter.units.users, interpreter.functions, ignored);
  if (!okay) return {};
  interpreter.line.good_target = target.name.data();
  return target.name;
}

bool fail_continuation(Parse& parse) {
  const Cursor here = parse.expptr;
  skip_to_end_of_line(parse.expptr);
  parse.err.append_three("ERROR: Syntax error -- Unexpected input continuation '",
                         here.until(parse.expptr), "'.\n");
  return false;
}

constexpr OpCode assign_op(int component) {
  return static_cast<OpCode>(static_cast<int>(OpCode::OP_ASSIGN) + component);
}

// Stores what the right side has left on the stack; the variable's whole value takes its place.
bool assign(Parse& parse, const Target& target) {
  Variables& variables = parse.interpreter.variables;
  ValueStack& stack = parse.compiled.value_stack;
  DimValue value = stack.pop_value();
  if (target.component != 0) {
    const Variable* old = variables.find_variable(target.name);
    if (old != nullptr && !dim_components_compatible(old->value, target.component, value, 1)) {
      parse.err.append_text(
          "ERROR: Incompatible units in component assignment (check previously defined units)"
          ".\n");
      return false;
    }
  }
  Variable& variable = variables.setvar(target.name, value, target.component);
  stack.push_value(value);
  parse.compiled.program.emit_op(assign_op(target.component), &variable);
  return true;
}

// REQUIRES: the cursor stands behind the "=".
bool is_assignment(Parse& parse, const Target& target) {
  const Interpreter& interpreter = parse.interpreter;
  interpreter.variables.expect(target.name);
  if (interpreter.line.good_target != target.name.data() &&
      !is_varname_okay(target.name, interpreter.units.users, interpreter.functions, parse.err)) {
    return false;
  }
  if (!compile_rhs(parse)) return false;
  if (!is_end_of_statement(parse.expptr)) return fail_continuation(parse);
  return assign(parse, target);
}

bool compile_lhs_and_rhs_and_clear_expptr(Parse& parse) {
  skip_blanks_and_comments(parse.expptr);
  if (is_end_of_statement(parse.expptr)) return true;
  Target target;
  if (scan_target(parse.expptr, target)) return is_assignment(parse, target);
  if (!compile_rhs(parse)) return false;
  return is_end_of_statement(parse.expptr) || fail_continuation(parse);
}

void append_label(TextBuf& out, std::string_view default_name, int number) {
  out.append_text("[  ");
  if (!default_name.empty()) out.append_text(default_name);
  out.append_integer(number);
  out.append_text(" ] ");
}

// A comment at the end of the line is part of the echo.
void echo_source_line(TextBuf& out, const Cursor& line_text, Cursor expptr) {
  skip_to_end_of_line(expptr);
  out.append_text(line_text.until(expptr));
  out.append_text("\n");
}

void append_message(TextBuf& out, const TextBuf& message, std::string_view ending) {
  out.append_text(kIndent);
  out.append_buffer(message);
  out.append_text(ending);
}

// The report of a request that the statement has carried out, in place of its value: the body is
// read once more, with the variables as the request has left them.
struct RequestReport {
  std::string_view header;
  std::string_view default_name;
};
constexpr RequestReport report_of(RequestKind kind) {
  switch (kind) {
    case RequestKind::kFunc:
      return {"\nFunc:\n", "Func"};
    case RequestKind::kSolve:
      return {"\nSolve:\n", "Sol"};
    case RequestKind::kMin:
      return {"\nMin:\n", "Min"};
    case RequestKind::kMax:
      return {"\nMax:\n", "Max"};
    case RequestKind::kNone:
      break;
  }
  return {};
}

void report_request(Interpreter& interpreter, TextBuf& out) {
  const RequestReport report = report_of(interpreter.request.request_kind());
  replay_body(interpreter, report.header, report.default_name, out);
  interpreter.request.request_close();
}

// One request behind a ";". The systems are known by their exact names; `mks` is a unit.
bool render_request(Interpreter& interpreter, const DimValue& value, Cursor& expptr) {
  LineScratch& line = interpreter.line;
  for (const UnitSystem system :
       {UnitSystem::kMks, UnitSystem::kCgs, UnitSystem::kFps, UnitSystem::kIps}) {
    if (accept_keyword(unit_system_name(system), expptr)) {
      render_system_output(system, line.result, value, interpreter.units, line.err);
      return true;
    }
  }
  return render_requested_output(line.result, value, expptr, UnitCheck::kCompare, interpreter.units,
                                 line.err);
}

// All requests of the line. A failed one is reported at once, ahead of the line's results.
// true: at least one was met.
bool render_requests(Interpreter& interpreter, const DimValue& value, Cursor& expptr,
                     TextBuf& out) {
  bool shown = false;
  skip_blanks_and_comments(expptr);
  while (accept_char(';', expptr)) {
    skip_blanks_and_comments(expptr);
    if (is_blank_before_comment(expptr)) break;  // a trailing semicolon is harmless
    if (render_request(interpreter, value, expptr)) shown = true;
    if (!interpreter.line.err.is_empty_text()) append_message(out, interpreter.line.err, "");
    skip_blanks_and_comments(expptr);
  }
  return shown;
}

}  // namespace

bool compile_input_line(Interpreter& interpreter, Cursor& expptr, CompiledStack& compiled,
                        DimValue& value, TextBuf& err) {
  Backtrack back(expptr);
  compiled.clear();
  err.clear_text();
  value = DimValue{};
  compiled.program.emit_op(OpCode::OP_CLEAR);
  Parse parse{interpreter, expptr, compiled, err};
  if (!compile_lhs_and_rhs_and_clear_expptr(parse)) return false;
  value = compiled.value_stack.pop_value();
  compiled.value_stack.clear();
  compiled.program.emit_op(OpCode::OP_RESULT);
  return back.accept();
}

bool compile_one_full_line(Interpreter& interpreter, std::string_view default_name,
                           int& line_counter, const Cursor& line_text, Cursor& expptr,
                           TextBuf& out) {
  LineScratch& line = interpreter.line;
  line.begin_line();
  interpreter.units.failed_parentheses.begin_line();
  bool held = false;
  const std::string_view name = probe_assignment_target(interpreter, expptr, held);
  append_label(out, default_name, line_counter);
  if (held) {
    out.append_text("UPDATED VALUE:\n");
  } else {
    echo_source_line(out, line_text, expptr);
  }

  if (is_special_function(interpreter, expptr, out, line_counter)) return false;
  DimValue value;
  if (!compile_input_line(interpreter, expptr, line.compiled, value, line.err)) {
    skip_to_end_of_line(expptr);
    append_message(out, line.err, "\n");
    return false;
  }
  if (interpreter.request.request_kind() != RequestKind::kNone && default_name.empty()) {
    report_request(interpreter, out);
    out.append_three(kIndent, name, "\n");
    skip_to_end_of_line(expptr);
    return line.err.is_empty_text();
  }
  dim_normalize_after_product(value);
  if (!render_requests(interpreter, value, expptr, out)) {
    render_default_output(line.result, value, interpreter.units, line.err);
    if (!line.err.is_empty_text()) append_message(out, line.err, "\n");
  }
  out.append_three(kIndent, name, line.result.text());
  out.append_text("\n\n");
  skip_to_end_of_line(expptr);
  return line.err.is_empty_text();
}

}  // namespace quantiverse
