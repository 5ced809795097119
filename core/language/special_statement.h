#pragma once

#include "language/interpreter.h"

namespace quantiverse {

// Carries out a statement that is known by its first word, whatever its case: MKS, cgs, FPS and
// IPS, each with an optional list of exceptions; DefUnit; begin, end and PrintFunc. The rest of
// the line is ignored.
// true:  it was one; `out` has its report or its error. The counter goes up by one where the
//        statement uses up a number. The cursor is at the end of the line.
// false: an ordinary line, the cursor has not moved.
bool is_special_function(Interpreter& interpreter, Cursor& expptr, TextBuf& out, int& line_counter);

}  // namespace quantiverse
