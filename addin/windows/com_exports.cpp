#include "addin/windows/com_exports.h"

#include <exception>

#include "addin/addin_state.h"
#include "addin/com_impl.h"

namespace quantiverse {
namespace {

// Nothing of ours may leave into Excel, which couldn't catch it.
int OnMacro(XlOldStyleEvent event) {
  CXllComImpl* const com = State().com.instance;
  try {
    if (com != nullptr) com->OnOldStyleMacro(event);
  } catch (const std::exception&) {
    return 1;
  }
  return 1;
}

}  // namespace

int XLCALL_PASCAL xlCheckInstance() {
  CXllComImpl* const com = State().com.instance;
  if (com != nullptr) com->OnCheckInstance();
  return 1;
}

int XLCALL_PASCAL CXllComImpl_OnSheetActivate() { return OnMacro(XlOldStyleEvent::kSheetActivate); }
int XLCALL_PASCAL CXllComImpl_OnSheetDeactivate() {
  return OnMacro(XlOldStyleEvent::kSheetDeactivate);
}
int XLCALL_PASCAL CXllComImpl_OnCalculate() { return OnMacro(XlOldStyleEvent::kCalculate); }

}  // namespace quantiverse
