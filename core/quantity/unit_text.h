#pragma once

#include "quantity/dimvalue.h"
#include "quantity/units.h"
#include "text/text_buf.h"

// Writes dimensions as text, such as "kg m / s^2". People read it, and so does the unit reader:
// results are written by reading this text back. So it is always a well-formed unit expression,
// and behind the first "/ " every name is below the line, with a positive exponent.
namespace quantiverse {

// In the base units of a system; nothing for a dimensionless value. FPS and IPS are systems of
// force, length and time, so there the exponent of mass moves to `lbf`, length and time.
void render_units(TextBuf& text, const Exponents& exps, UnitSystem system);

// As results are written by default: in the first exception that has exactly this dimension,
// angle and amount included, or else in the base units of the current system.
void render_units_with_exceptions(TextBuf& text, const Exponents& exps, Units& units);

// The same for messages, with "Dimensionless" where there is nothing to write.
void render_dimension_text(TextBuf& text, const Exponents& exps, Units& units);

}  // namespace quantiverse
