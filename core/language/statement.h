#pragma once

#include "language/interpreter.h"

namespace quantiverse {

// Takes the statement at the cursor, which is not blank and no comment: decides what it is,
// compiles and computes it, and appends its whole report to `out`, the echo of the line first.
// line_text: where the line starts, blanks included, for the echo.
// The line on which a request is carried out, or the first good one behind a solve that failed,
// shows the body once more in place of its own value.
// line_counter: the number in the label; special statements raise it (see special_statement.h).
// The cursor ends at the end of the line.
// true: a statement with a value that left no error behind, so that it keeps its number.
bool compile_one_full_line(Interpreter& interpreter, std::string_view default_name,
                           int& line_counter, const Cursor& line_text, Cursor& expptr,
                           TextBuf& out);

// Compiles one statement, an assignment or an expression, up to its end: the ";" of a request, a
// comment, the newline. `compiled` is cleared first; afterwards its program computes `value`
// again. An empty statement is worth zero.
// false: `err` says why, the cursor has not moved.
bool compile_input_line(Interpreter& interpreter, Cursor& expptr, CompiledStack& compiled,
                        DimValue& value, TextBuf& err);

}  // namespace quantiverse
