#pragma once

#include <string_view>

#include "language/interpreter.h"

namespace quantiverse {

// The statement `DefUnit(name, expression)`, with the cursor behind its word. The unit holds for
// the rest of the call's text, and `out` gets a line that says so. The comma and the closing
// parenthesis are not insisted on; a list that ends before the expression defines nothing and
// says nothing, and so does the word without a parenthesis.
// err: cleared first; an unfit name, an expression with an error, a value of zero. Nothing is
// defined then.
void define_user_unit(Interpreter& interpreter, Cursor& expptr, TextBuf& out, TextBuf& err);

// May `name` become a unit? Built-in units, functions and variables are refused, with a message in
// `err`; a user unit can be defined anew.
bool is_new_unit_name_okay(Interpreter& interpreter, std::string_view name, TextBuf& err);

}  // namespace quantiverse
