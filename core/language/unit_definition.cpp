#include "language/unit_definition.h"

#include "language/expression.h"
#include "language/result_text.h"
#include "quantity/unit_dictionary.h"
#include "text/scanner.h"

namespace quantiverse {
namespace {

void define(Interpreter& interpreter, std::string_view name, Cursor& expptr, TextBuf& out,
            TextBuf& err) {
  CompiledStack& compiled = interpreter.line.compiled;
  compiled.clear();
  compiled.program.emit_op(OpCode::OP_CLEAR);
  Parse parse{interpreter, expptr, compiled, err};
  if (!compile_rhs(parse)) {
    if (err.is_empty_text()) err.append_text("ERROR: Could not process second argument.\n");
    return;
  }
  const DimValue value = compiled.value_stack.pop_value();
  interpreter.units.users.store_user_unit(name, value, err);
  if (!err.is_empty_text()) return;
  out.append_three(" User defined unit '", name, "' ");
  render_default_output(out, value, interpreter.units, err);
  out.append_text("\n");
}

}  // namespace

void define_user_unit(Interpreter& interpreter, Cursor& expptr, TextBuf& out, TextBuf& err) {
  err.clear_text();
  skip_blanks_and_comments(expptr);
  if (!accept_char('(', expptr)) return;
  std::string_view name;
  for (;;) {
    skip_blanks_and_comments(expptr);
    if (accept_char(')', expptr)) return;
    if (accept_char(',', expptr)) continue;
    if (!name.empty()) return define(interpreter, name, expptr, out, err);
    name = scan_name(expptr);
    if (name.empty()) {
      // The name that isn't one is not quoted, and the quote stays open.
      err.append_text("ERROR: Illegal new unit name '.\n");
      return;
    }
    if (!is_new_unit_name_okay(interpreter, name, err)) return;
  }
}

bool is_new_unit_name_okay(Interpreter& interpreter, std::string_view name, TextBuf& err) {
  if (!err.is_empty_text()) return false;
  const UserUnits& users = interpreter.units.users;
  std::string_view reason;
  if (users.find_user_unit(name) == nullptr && is_base_unit_name(users, name)) {
    reason = "' matches an existing base unit.\n";
  } else if (interpreter.functions.lookup_function_name(name).number != 0) {
    reason = "' matches a pre-programmed function.\n";
  } else if (interpreter.variables.find_variable(name) != nullptr) {
    reason = "' matches an existing variable name.\n";
  } else {
    return true;
  }
  err.append_three("ERROR: New unit name '", name, reason);
  return false;
}

}  // namespace quantiverse
