#pragma once

#include <string>
#include <string_view>

#include "addin/dual_string.h"
#include "addin/xloper.h"

// The worksheet function Quantiverse(Val, InUnits, OutUnits), and the macro that brings it into a
// cell: their bodies, for the entry points of both generations.
namespace quantiverse {

// Converts `value` and makes `result` a row of two: the converted number and its unit as text, or
// the text of an error and the empty text. An Excel that isn't supported gets a single text.
// Any thread. Gives null: the result stands in `result`.
// Throws CXlStructuredException for an output that holds no result, as can be brought about by
// texts in place of units.
const CXlOper* QuantiverseBody(CXlOper& result, double value, const CXlDualString& in_units,
                               const CXlDualString& out_units);

// Puts an empty call of the function into the active cell and opens the Function Arguments dialog
// on it. Gives null and leaves `result` alone. Main thread only.
const CXlOper* QuantiverseMacroBody(CXlOper& result);

// "15.0" as a number; 0.0 if Excel gives none.
double GetExcelRelease();

// As the macro, for a function of any name. A cell that calls it already keeps its formula; other
// contents go only if the user agrees.
// false: there is no active cell, or the user doesn't agree.
bool InsertFunctionInActiveCell(const std::string& name);

// What there is in the interpreter's output for one line.
struct CXlScrape {
  bool is_error = false;
  double value = 0.0;  // unless it is an error
  std::string text;    // the unit as the output shows it, line ends included, or the error
};

// Makes `line` the one that asks for a conversion; the value keeps six digits.
void ConversionLine(double value, const CXlDualString& in_units, const CXlDualString& out_units,
                    std::string& line);

// Throws CXlStructuredException where the output has no "=", or no blank behind the number.
CXlScrape ScrapeOutput(std::string_view output);

}  // namespace quantiverse
