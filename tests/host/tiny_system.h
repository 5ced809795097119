#pragma once

#include "host/xlcall.h"
#if defined(_WIN32)
#include "host/windows.h"
#else
#include <dlfcn.h>
#endif

// What the add-in for tests asks of the system: where Excel's entry points are, and a message box.
// All of it goes its own way, so that an error of the real add-in doesn't hide one of the host.
#if defined(_WIN32)
// From XLCall32.dll.
extern "C" int XLHOST_PASCAL Excel4v(int function, quantiverse::host::Record4* result, int count,
                                     quantiverse::host::Record4** arguments);
#endif

namespace quantiverse::host {

#if defined(_WIN32)

inline auto* find_excel4v() { return &Excel4v; }

inline Callback12* find_callback12() {
  return reinterpret_cast<Callback12*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(nullptr), "MdCallBack12")));
}

inline int show_message_box(const char16_t* text, const char16_t* title, unsigned flags) {
  return MessageBoxW(nullptr, reinterpret_cast<const wchar_t*>(text),
                     reinterpret_cast<const wchar_t*>(title), flags);
}

#else

template <class Function>
Function* find_in_host(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

inline auto* find_excel4v() { return find_in_host<int(int, Record4*, int, Record4**)>("Excel4v"); }

inline Callback12* find_callback12() { return find_in_host<Callback12>("MdCallBack12"); }

inline int show_message_box(const char16_t* text, const char16_t* title, unsigned flags) {
  using Box = int(const char16_t*, const char16_t*, unsigned);
  return find_in_host<Box>("XlHostMessageBox")(text, title, flags);
}

#endif

}  // namespace quantiverse::host
