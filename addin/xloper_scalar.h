#pragma once

#include <cstdint>
#include <string>

#include "addin/xl_record.h"

// Records as plain values. Numbers, bools, integers and texts convert to each other; an error
// converts to text alone, other types to nothing.
// false: no such value; the result is then 0.0, false, 0 or the empty text.
namespace quantiverse {

// A text has to be a number from end to end but for white space, as strtod reads it in a program
// without a locale: with hexadecimal, infinity and NaN. Too large and too small fail.
template <XlRecord Record>
bool ToPlain(const Record& record, double& result);

// 0 is false, all else true, NaN included. A text is "true" or "false" in any case, or a number.
template <XlRecord Record>
bool ToPlain(const Record& record, bool& result);

// Fractions are cut off; what is then beyond 32 bits fails, and so does NaN.
template <XlRecord Record>
bool ToPlain(const Record& record, std::int32_t& result);

// A number has six decimals and is cut to 31 characters, a bool is TRUE or FALSE, an error is
// what Excel writes for it.
template <XlRecord Record>
bool ToPlain(const Record& record, std::string& result);
template <XlRecord Record>
bool ToPlain(const Record& record, std::u16string& result);

}  // namespace quantiverse
