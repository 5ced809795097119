#pragma once

#include "language/compiled_stack.h"
#include "language/interpreter.h"
#include "text/text_buf.h"

namespace quantiverse {

// Runs a program with the variables as they are now. The result is what its last OP_RESULT,
// assignment or call has left; an empty program gives zero.
// err: cleared first. An error ends the run at once: no operation behind it happens.
// May be called from a handler while another program runs.
DimValue eval_compiled_stck(Interpreter& interpreter, const Program& program, TextBuf& err);

// The function that a solver sees: puts `x` into the independent variables of the request, runs
// the body, and gives the dependent variables in `f`. Units aren't looked at: numbers are MKS, or
// their logarithms where the request says so.
// x: independent_count() numbers. f: dependent_count() numbers, 0 if the body fails.
// err: with an error pending no variable is touched. The variables keep what the last evaluation
//      left in them.
// REQUIRES: request_check() found nothing wrong.
void request_evaluate(Interpreter& interpreter, const double* x, double* f, TextBuf& err);

}  // namespace quantiverse
