#pragma once

#include <string_view>

#include "quantity/units.h"
#include "text/cursor.h"
#include "text/text_buf.h"

// How a value is written. The layout is an interface: programs take results out of the text by
// its blanks and signs, " = " above all.
namespace quantiverse {

// What reads the output finds a line's report by the blanks in front of it.
inline constexpr std::string_view kIndent = "       ";

// Is a value that can't be in the unit to be refused?
enum class UnitCheck { kCompare, kSkip };

// Reads a unit expression at the cursor and appends the value in that unit, " = 1.524 m" or
// " = [ 1 , 2 , 3 ] m", with the unit as it was typed. The cursor ends behind the expression.
// err: cleared first; a text that is no unit, or a unit of another dimension.
// true: the value is shown.
bool render_requested_output(TextBuf& result, const DimValue& value, Cursor& expptr,
                             UnitCheck check, Units& units, TextBuf& err);

// The value in the base units of a system; its exceptions are not asked.
void render_system_output(UnitSystem system, TextBuf& result, const DimValue& value, Units& units,
                          TextBuf& err);

// The value in the current system with its exceptions.
void render_default_output(TextBuf& result, const DimValue& value, Units& units, TextBuf& err);

}  // namespace quantiverse
