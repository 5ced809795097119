#include "quantity/conversion.h"

namespace quantiverse {

DimValue convert_non_affine_ToMKS_vec_full(const DimValue& value, const UnitDef& unit,
                                           TextBuf& err) {
  if (unit.w0 == 0.0) {
    err.append_text("ERROR: w0 divide by zero in convert_non_affine_ToMKS_vec_full.\n");
    return {};
  }
  DimValue result{value.vector, {}, unit.exps};
  for (std::size_t i = 0; i < result.comp.size(); ++i) {
    result.comp[i] = (value.comp[i] - unit.offset) / unit.w0;
  }
  return result;
}

DimValue convert_non_affine_FromMKS_vec_full(const DimValue& value, const UnitDef& unit) {
  DimValue result{value.vector, {}, unit.exps};
  for (std::size_t i = 0; i < result.comp.size(); ++i) {
    result.comp[i] = value.comp[i] * unit.w0 + unit.offset;
  }
  return result;
}

}  // namespace quantiverse
