#pragma once

#include "language/interpreter.h"

// The grammar of expressions. It computes while it reads: operands go on the value stack, each
// operation that has worked is emitted to the program beside it. From loose to tight:
//
//   sum       term { ("+" | "-") term }
//   term      factor { ("*" | "/") factor }
//   factor    primary { unit-expression | "^" primary }
//   primary   number | [sign] ( "(" sum ")" | vector | call | name | name "[" arguments "]" )
//
// All chains go from left to right, so 2^3^2 is 64. A sign in front of digits belongs to the
// number: -2^2 is 4. A unit is a suffix like a power, and no blank may stand before a "^" except
// behind a variable's name. A primary that isn't there is nothing: it succeeds without pushing,
// and the empty stack counts as zero.
//
// All routines: true when they went on (perhaps over nothing), false with a message in `err`.
// REQUIRES: `err` is empty. On false the cursor stands anywhere; the statement puts it back.
namespace quantiverse {

// A sum, up to ")", "," or "]" or the end of the statement.
bool compile_rhs(Parse& parse);

// A primary, or nothing. Sets Parse::value_end.
bool is_num_paren_var_func_or_null(Parse& parse);

}  // namespace quantiverse
