#pragma once

#include "addin/xl_record.h"

namespace quantiverse {

// A value of one generation as one of the other. Texts go through the system's code page, an array
// goes element by element. `to` is overwritten, and owns its contents if its type has any; on
// failure it is zero.
//
// To an XLOPER: a text is cut to 255 characters; an integer beyond 16 bits becomes a number.
// false: an array or an area beyond the limits of the form, or a type that it doesn't have.
bool ConvertRecord(const XLOPER12& from, XLOPER& to);
// To an XLOPER12 nothing fails. What has no meaning there becomes the error #VALUE!.
bool ConvertRecord(const XLOPER& from, XLOPER12& to);

// Of one form: a copy.
template <XlRecord Record>
bool ConvertRecord(const Record& from, Record& to) {
  CopyRecord(from, to);
  return true;
}

}  // namespace quantiverse
