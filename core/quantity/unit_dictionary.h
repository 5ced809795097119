#pragma once

#include <string_view>

#include "quantity/dimvalue.h"
#include "quantity/unit_table.h"
#include "quantity/user_units.h"
#include "text/cursor.h"

namespace quantiverse {

// The built-in unit of exactly this name, or null. There are no prefixes and no plurals but those
// in the table, and case counts.
const UnitRow* find_unit(std::string_view name);

// Looks up the unit name at the cursor, user units first. On a hit `record` has the dimension
// and, in comp[0], how many of the unit make one MKS base unit, and the cursor stands behind the
// name. On a miss `record` is all zero (no unit has the value 0) and the cursor has not moved.
// Temperature offsets are not the dictionary's business.
bool lookup_unit_name(const UserUnits& users, Cursor& expptr, DimValue& record);

// Does a unit's name stand at the start of `text`?
bool is_base_unit_name(const UserUnits& users, std::string_view text);

}  // namespace quantiverse
