// The library's entry where the system has one for libraries.
#include <string>

#include "addin/host.h"
#include "addin/library_entry.h"
#include "addin/windows/module.h"
#include "addin/windows/windows.h"

namespace quantiverse {
namespace {

std::string PathOf(HMODULE module) {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const auto room = static_cast<DWORD>(path.size());
    const DWORD length = GetModuleFileNameW(module, path.data(), room);
    if (length < room) {
      path.resize(length);
      return NarrowText({AsUtf16(path.data()), path.size()});
    }
    path.resize(2 * path.size());
  }
}

bool Attach(HMODULE module) { return LibraryEntry(XlLibraryReason::kAttach, PathOf(module)); }

}  // namespace
}  // namespace quantiverse

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
  using quantiverse::LibraryEntry;
  using quantiverse::XlLibraryReason;
  switch (reason) {
    case DLL_PROCESS_ATTACH:
      return quantiverse::Attach(module) ? TRUE : FALSE;
    case DLL_THREAD_DETACH:
      return LibraryEntry(XlLibraryReason::kThreadDetach) ? TRUE : FALSE;
    case DLL_PROCESS_DETACH:
      return LibraryEntry(XlLibraryReason::kDetach) ? TRUE : FALSE;
    default:
      return TRUE;
  }
}
