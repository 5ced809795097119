#pragma once

#include "quantity/units.h"
#include "text/cursor.h"
#include "text/text_buf.h"

namespace quantiverse {

// Carries out a statement that is known by its first word, whatever its case: MKS, cgs, FPS and
// IPS, each with an optional list of exceptions. The rest of the line is ignored.
// true:  it was one; `message` is its report or its error. The counter goes up by one where the
//        statement uses up a number. The cursor is at the end of the line.
// false: an ordinary line, the cursor has not moved.
bool is_special_function(Units& units, Cursor& expptr, TextBuf& message, TextBuf& err,
                         int& line_counter);

}  // namespace quantiverse
