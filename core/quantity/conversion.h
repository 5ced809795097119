#pragma once

#include "quantity/dimvalue.h"
#include "text/text_buf.h"

// The boundary between numbers in a unit and MKS values. The exponents of the result always come
// from the unit; whether they fit the value is for the caller to ask. Each component of a vector
// is treated alike.
namespace quantiverse {

// (value - offset) / w0, in this order: a true division, no multiplication by a reciprocal.
// err: a unit whose w0 is 0; the result is then a clear scalar.
DimValue convert_non_affine_ToMKS_vec_full(const DimValue& value, const UnitDef& unit,
                                           TextBuf& err);

// value * w0 + offset.
DimValue convert_non_affine_FromMKS_vec_full(const DimValue& value, const UnitDef& unit);

}  // namespace quantiverse
