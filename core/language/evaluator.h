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

}  // namespace quantiverse
