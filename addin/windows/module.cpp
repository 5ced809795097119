#include "addin/windows/module.h"

namespace quantiverse {

HMODULE ModuleHandle() {
  static constexpr wchar_t kAnchor = 0;
  HMODULE module = nullptr;
  constexpr DWORD kHowSought =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  GetModuleHandleExW(kHowSought, &kAnchor, &module);
  return module;
}

}  // namespace quantiverse
