// What a value asks of Excel about cells.
#include "addin/excel_call.h"
#include "addin/return_block.h"
#include "addin/xloper.h"

namespace quantiverse {
namespace {

constexpr double kIsPartOfArray = 49.0;  // what xlfGetCell is to tell

int Localised(int function, bool local_text) { return local_text ? function | xlIntl : function; }

}  // namespace

int CXlOper::Coerce(unsigned type, CXlOper* into) const {
  CXlOper dropped;
  CXlOper& answer = into != nullptr ? *into : dropped;
  const int code = Excel(answer, xlCoerce, *this, static_cast<std::int32_t>(type));
  if (code != xlretSuccess) return code;
  return answer.Type() == type ? xlretSuccess : xlretFailed;
}

bool CXlOper::GetActiveCell() {
  return Excel(*this, xlfActiveCell) == xlretSuccess && Coerce(xltypeRef, this) == xlretSuccess;
}

bool CXlOper::GetFormula(bool local_text, CXlOper& formula, bool& array_flag, bool to_a1) const {
  if (Type() == xltypeSRef) {
    CXlOper reference;
    return Coerce(xltypeRef, &reference) == xlretSuccess &&
           reference.GetFormula(local_text, formula, array_flag, to_a1);
  }
  if (Type() != xltypeRef) return false;

  CXlOper text;
  CXlOper in_array;
  if (Excel(text, Localised(xlfGetFormula, local_text), *this) != xlretSuccess) return false;
  if (Excel(in_array, xlfGetCell, kIsPartOfArray, *this) != xlretSuccess) return false;
  if (to_a1 && Excel(text, Localised(xlfFormulaConvert, local_text), text, false, true,
                     ReturnBlock().missing, *this) != xlretSuccess) {
    return false;
  }
  formula = text;
  array_flag = in_array.ToBool();
  return true;
}

bool CXlOper::SetFormula(bool local_text, const CXlOper& formula, bool as_array,
                         bool from_a1) const {
  CXlOper converted;
  if (from_a1) {
    if (Excel(converted, Localised(xlfFormulaConvert, local_text), formula, true, false,
              ReturnBlock().missing, *this) != xlretSuccess ||
        converted.IsError()) {
      return false;
    }
  }
  if (Type() != xltypeRef) return false;
  const int command = as_array ? xlcFormulaArray : xlcFormula;
  return XlCommand(Localised(command, local_text), from_a1 ? converted : formula, *this) ==
         xlretSuccess;
}

}  // namespace quantiverse
