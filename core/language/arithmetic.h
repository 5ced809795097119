#pragma once

#include "language/compiled_stack.h"
#include "quantity/units.h"
#include "text/text_buf.h"

// The operations of the language on quantities. Each pops its operands, checks them in a fixed
// order, and pushes exactly one result, also with an error; the message is in `err`.
// REQUIRES: `err` is empty. `units` is for the dimensions in messages.
// The overflow that messages speak of is +infinity in the first component; underflow, a NaN and
// other infinities pass.
namespace quantiverse {

void stack_add(ValueStack& stack, Units& units, TextBuf& err);
void stack_subtract(ValueStack& stack, Units& units, TextBuf& err);
void stack_multiply(ValueStack& stack, TextBuf& err);
// A division by zero counts as an overflow.
void stack_divide(ValueStack& stack, TextBuf& err);
void stack_exponentiate(ValueStack& stack, Units& units, TextBuf& err);
void stack_negate(ValueStack& stack, TextBuf& err);

inline constexpr const char* kNeedsDimensionless =
    "ERROR: Units assignment requires dimensionless value before it.\n";
// Pops a unit and the number before it: `5 ft`.
void stack_assign_units(ValueStack& stack, TextBuf& err);
// Pops a unit and a value of its dimension; pushes the plain number of such units.
void stack_to_number(ValueStack& stack, TextBuf& err);
// Pops up to three components, the last on top. A null one takes on the dimension of the others.
void stack_build_vector(int count, ValueStack& stack, TextBuf& err);

}  // namespace quantiverse
