#pragma once

#include "quantity/dimvalue.h"
#include "quantity/units.h"
#include "text/cursor.h"
#include "text/text_buf.h"

namespace quantiverse {

// Reads a unit expression at the cursor into `unit`: `km/hr`, `kg m / s^2`, `W/(m^2 degK)`.
// Behind the first "/" of a level every factor divides, also one joined by "*" or by nothing; a
// parenthesis starts a level of its own.
// unit:  w0 counts units per MKS base unit; the offset is set only for a lone degC or degF.
// true:  a unit was read; the cursor is behind the last good factor. At the end of a statement
//        that may be the empty expression.
// false: nothing was read, the cursor has not moved.
// err:   cleared first. May be set on true as well (a bad later factor): look at it. Not set on
//        false means that there is no unit here.
bool parse_unit_expression(Units& units, Cursor& expptr, UnitDef& unit, TextBuf& err);

// Does exactly one unit's name stand at the cursor? Takes it and fills `record` if so; otherwise
// the cursor has not moved.
bool is_unit(const Units& units, Cursor& expptr, DimValue& record);

}  // namespace quantiverse
