#include <cstddef>

#include "addin/host.h"
#include "addin/windows/windows.h"

// What Excel offers comes in by its import library, but for the entry of the newer generation.
extern "C" {
__declspec(dllimport) int Excel4(int function, quantiverse::XLOPER* result, int count, ...);
__declspec(dllimport) int XLCALL_PASCAL
    Excel4v(int function, quantiverse::XLOPER* result, int count, quantiverse::XLOPER** arguments);
}

namespace quantiverse {
namespace {

BOOL CALLBACK KeepExcelWindow(HWND window, LPARAM found) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  wchar_t name[16] = {};
  GetClassNameW(window, name, std::size(name));
  if (process != GetCurrentProcessId() || std::wstring_view(name) != L"XLMAIN") return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

// Null if this process has none.
HWND FindExcelWindow() {
  HWND found = nullptr;
  EnumWindows(KeepExcelWindow, reinterpret_cast<LPARAM>(&found));
  return found;
}

class CXlMainProgram final : public CXlHost {
 public:
  Excel4Entry* Excel4() override { return ::Excel4; }
  Excel4vEntry* Excel4v() override { return ::Excel4v; }
  MdCallBack12Entry* FindMdCallBack12() override {
    return FunctionFrom<MdCallBack12Entry>(GetModuleHandleW(nullptr), "MdCallBack12");
  }
  int ShowMessageBox(const char16_t* text, const char16_t* title, unsigned flags) override {
    return MessageBoxW(FindExcelWindow(), AsWide(text), AsWide(title), flags);
  }
};

static_assert(std::is_trivially_destructible_v<CXlMainProgram>);

}  // namespace

CXlHost& PlatformHost() {
  static CXlMainProgram program;
  return program;
}

// Both conversions know how long their result is only when they have made it; the second time is
// the one that counts.
std::string NarrowText(std::u16string_view wide) {
  const int length = static_cast<int>(wide.size());
  const auto convert = [&](char* to, int room) {
    return WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, AsWide(wide.data()), length, to, room,
                               "?", nullptr);
  };
  if (length == 0) return {};
  std::string narrow(wide.size(), '\0');
  int written = convert(narrow.data(), length);
  if (written == 0) {  // a code page with characters of several bytes
    narrow.resize(static_cast<std::size_t>(convert(nullptr, 0)));
    written = convert(narrow.data(), static_cast<int>(narrow.size()));
  }
  narrow.resize(static_cast<std::size_t>(written));
  return narrow;
}

std::u16string WideText(std::string_view narrow) {
  const int length = static_cast<int>(narrow.size());
  if (length == 0) return {};
  std::u16string wide(narrow.size(), u'\0');  // a byte is never more than one of these
  const int written = MultiByteToWideChar(CP_ACP, 0, narrow.data(), length,
                                          reinterpret_cast<wchar_t*>(wide.data()), length);
  wide.resize(static_cast<std::size_t>(written));
  return wide;
}

// The library's entry tells of ending threads.
bool ThreadSlot::Allocate(void (*)(void* pointer)) {
  const DWORD index = TlsAlloc();
  allocated = index != TLS_OUT_OF_INDEXES;
  key = index;
  return allocated;
}

void ThreadSlot::Free() {
  if (allocated) TlsFree(key);
  allocated = false;
}

void* ThreadSlot::Get() const { return allocated ? TlsGetValue(key) : nullptr; }
bool ThreadSlot::Set(void* pointer) const { return allocated && TlsSetValue(key, pointer) != 0; }

}  // namespace quantiverse
