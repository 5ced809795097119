#pragma once

#include <cstdint>

#include "addin/xlcall.h"

// All that Excel calls by name. CMakeLists.txt lists the names: the library exports these and no
// others. A CXlRuntimeException becomes a value, or is told to the user by xlAutoOpen.
namespace quantiverse {

extern "C" {

// Excel loads or opens the add-in: registers everything. 1 for done; 0 if that failed, which the
// user has been told, or if it is open already.
int XLCALL_PASCAL xlAutoOpen();
// Excel or the add-in is about to close. Always 1.
int XLCALL_PASCAL xlAutoClose();
// The user adds the add-in to Excel's list; 0 refuses. And removes it from there; always 1.
int XLCALL_PASCAL xlAutoAdd();
int XLCALL_PASCAL xlAutoRemove();
// Excel wants the add-in's name for its list: `action` is 1 then. #VALUE! for any other.
XLOPER* XLCALL_PASCAL xlAddInManagerInfo(const XLOPER* action);
XLOPER12* XLCALL_PASCAL xlAddInManagerInfo12(const XLOPER12* action);
// Excel has read a value that was marked with xlbitDLLFree.
void XLCALL_PASCAL xlAutoFree(XLOPER* record);
void XLCALL_PASCAL xlAutoFree12(XLOPER12* record);
// A host without the export MdCallBack12 says before anything else where that is. Always 0.
int XLCALL_PASCAL SetExcel12EntryPt(MdCallBack12Entry* entry);

// The registered functions, each for both generations. What comes back stays valid until the same
// thread calls again.
XLOPER* XLCALL_PASCAL Quantiverse_4(double value, const char* in_units, const char* out_units);
XLOPER12* XLCALL_PASCAL Quantiverse_12(double value, const char16_t* in_units,
                                       const char16_t* out_units);
XLOPER* XLCALL_PASCAL Quantiverse_Macro_4();
XLOPER12* XLCALL_PASCAL Quantiverse_Macro_12();
XLOPER* XLCALL_PASCAL RibbonCallback_4(std::int32_t callback, const char* id, const char* tag,
                                       std::int32_t index, const char* text,
                                       const char* selected_id, std::int16_t pressed);
XLOPER12* XLCALL_PASCAL RibbonCallback_12(std::int32_t callback, const char16_t* id,
                                          const char16_t* tag, std::int32_t index,
                                          const char16_t* text, const char16_t* selected_id,
                                          std::int16_t pressed);

// The function through which Excel's macro language tells of events. A bool comes back: true if
// the event is cancelled.
XLOPER* XLCALL_PASCAL CXlApp_ObserverEventHandler4(std::int32_t number, const XLOPER* argument1,
                                                   const XLOPER* argument2,
                                                   const XLOPER* argument3);
XLOPER12* XLCALL_PASCAL CXlApp_ObserverEventHandler12(std::int32_t number,
                                                      const XLOPER12* argument1,
                                                      const XLOPER12* argument2,
                                                      const XLOPER12* argument3);
}

}  // namespace quantiverse
