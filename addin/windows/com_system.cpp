#include "addin/services/com_system.h"

#include <cstring>
#include <string_view>

#include "addin/platform_services.h"
#include "addin/windows/com_dispatch.h"

namespace quantiverse {
namespace {

// Asks a window for its program's own objects, in place of what is accessible.
constexpr auto kNativeObjects = static_cast<DWORD>(-16);

XlComResult Result(HRESULT result) { return static_cast<XlComResult>(result); }
XlComStep Step(const char16_t* call, HRESULT result) { return {call, Result(result)}; }

HWND WindowOf(std::uintptr_t handle) { return reinterpret_cast<HWND>(handle); }
std::uintptr_t HandleOf(HWND window) { return reinterpret_cast<std::uintptr_t>(window); }

bool IsOfClass(HWND window, std::wstring_view name) {
  constexpr int kRoom = 64;  // longer than any that is sought
  wchar_t text[kRoom];
  const int length = GetClassNameW(window, text, kRoom);
  return length > 0 && name == std::wstring_view(text, static_cast<std::size_t>(length));
}

struct MainWindowSearch {
  std::uint16_t low_word;
  HWND found;
};

BOOL CALLBACK OnTopWindow(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<MainWindowSearch*>(parameter);
  if (static_cast<std::uint16_t>(HandleOf(window)) != search.low_word) return TRUE;
  if (!IsOfClass(window, L"XLMAIN")) return TRUE;
  search.found = window;
  return FALSE;
}

BOOL CALLBACK OnChildWindow(HWND window, LPARAM parameter) {
  if (!IsOfClass(window, L"EXCEL7")) return TRUE;
  *reinterpret_cast<HWND*>(parameter) = window;
  return FALSE;
}

CLSID ClassIdOf(const XlClassId& id) {
  CLSID clsid;
  static_assert(sizeof clsid == sizeof id.bytes);
  std::memcpy(&clsid, id.bytes.data(), sizeof clsid);
  return clsid;
}

class CXlRunningObjects final : public IXlRunningObjects {
 public:
  CXlRunningObjects(ComPointer<IBindCtx> context, ComPointer<IEnumMoniker> monikers)
      : context_(std::move(context)), monikers_(std::move(monikers)) {}

  bool Next(XlDispatchPtr& object) override {
    ComPointer<IMoniker> moniker;
    if (monikers_->Next(1, moniker.Receive(), nullptr) != S_OK) return false;
    ComPointer<IDispatch> bound;
    moniker->BindToObject(context_.Get(), nullptr, IID_IDispatch, bound.ReceiveVoid());
    object = MakeDispatch(std::move(bound));
    return true;
  }

 private:
  ComPointer<IBindCtx> context_;
  ComPointer<IEnumMoniker> monikers_;
};

class CXlWindowsComSystem final : public IXlComSystem {
 public:
  XlComResult Initialize() override { return Result(CoInitialize(nullptr)); }
  void Uninitialize() override { CoUninitialize(); }

  std::uintptr_t FindMainWindow(std::uint16_t low_word) override {
    MainWindowSearch search{low_word, nullptr};
    EnumWindows(OnTopWindow, reinterpret_cast<LPARAM>(&search));
    return HandleOf(search.found);
  }
  std::uintptr_t FindWorkbookWindow(std::uintptr_t main_window) override {
    HWND found = nullptr;
    // Without a window to look below, all that there are would be looked at.
    if (main_window != 0) {
      EnumChildWindows(WindowOf(main_window), OnChildWindow, reinterpret_cast<LPARAM>(&found));
    }
    return HandleOf(found);
  }
  XlComResult ObjectOfWindow(std::uintptr_t window, XlDispatchPtr& object) override {
    ComPointer<IDispatch> dispatch;
    const HRESULT result = AccessibleObjectFromWindow(WindowOf(window), kNativeObjects,
                                                      IID_IDispatch, dispatch.ReceiveVoid());
    object = MakeDispatch(std::move(dispatch));
    return Result(SUCCEEDED(result) && object == nullptr ? E_NOINTERFACE : result);
  }

  XlComResult ClassOfProgram(const char16_t* program, XlClassId& id) override {
    CLSID clsid{};
    const HRESULT result = CLSIDFromProgID(AsWide(program), &clsid);
    std::memcpy(id.bytes.data(), &clsid, sizeof clsid);
    return Result(result);
  }
  XlComStep ActiveObject(const XlClassId& id, XlDispatchPtr& object) override {
    ComPointer<IUnknown> unknown;
    HRESULT result = GetActiveObject(ClassIdOf(id), nullptr, unknown.Receive());
    if (FAILED(result)) return Step(u"GetActiveObject", result);
    ComPointer<IDispatch> dispatch;
    result = unknown->QueryInterface(IID_IDispatch, dispatch.ReceiveVoid());
    object = MakeDispatch(std::move(dispatch));
    return Step(u"QueryInterface", result);
  }
  XlComStep RunningObjects(std::unique_ptr<IXlRunningObjects>& objects) override {
    ComPointer<IBindCtx> context;
    HRESULT result = CreateBindCtx(0, context.Receive());
    if (FAILED(result)) return Step(u"CreateBindCtx", result);
    ComPointer<IRunningObjectTable> table;
    result = GetRunningObjectTable(0, table.Receive());
    if (FAILED(result)) return Step(u"GetRunningObjectTable", result);
    ComPointer<IEnumMoniker> monikers;
    result = table->EnumRunning(monikers.Receive());
    if (FAILED(result)) return Step(u"EnumRunning", result);
    result = monikers->Reset();
    objects = std::make_unique<CXlRunningObjects>(std::move(context), std::move(monikers));
    return Step(u"Reset", result);
  }

  void Trace(const std::u16string& text) override { OutputDebugStringW(AsWide(text.c_str())); }
};

}  // namespace

IXlComSystem* PlatformComSystem() {
  static constinit CXlWindowsComSystem system;
  return &system;
}

}  // namespace quantiverse
