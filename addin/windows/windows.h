#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <iterator>
#include <string_view>
#include <type_traits>

// Windows, without its macros that are names of ours as well.
#undef FormatMessage
#undef RegisterClass
#undef GetMessage

namespace quantiverse {

static_assert(sizeof(wchar_t) == sizeof(char16_t));
inline const wchar_t* AsWide(const char16_t* text) {
  return reinterpret_cast<const wchar_t*>(text);
}
inline const char16_t* AsUtf16(const wchar_t* text) {
  return reinterpret_cast<const char16_t*>(text);
}

// Null if the module exports nothing of that name.
template <typename Function>
Function* FunctionFrom(HMODULE module, const char* name) {
  // By way of a plain function: the compiler warns of a cast between unlike ones.
  return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

}  // namespace quantiverse
