#include "addin/windows/wizard_hook.h"

#include <commctrl.h>

#include <cstdio>

#include "addin/addin_state.h"
#include "addin/exceptions.h"
#include "addin/windows/wizard_function_name.h"
#include "addin/windows/wizard_windows.h"

namespace quantiverse {
namespace {

constexpr bool IsNumbered(XlWizardMessage message, UINT number) {
  return static_cast<UINT>(message) == number;
}
static_assert(IsNumbered(XlWizardMessage::kCreate, WM_CREATE));
static_assert(IsNumbered(XlWizardMessage::kDestroy, WM_DESTROY));
static_assert(IsNumbered(XlWizardMessage::kSize, WM_SIZE));
static_assert(IsNumbered(XlWizardMessage::kActivate, WM_ACTIVATE));
static_assert(IsNumbered(XlWizardMessage::kSetFocus, WM_SETFOCUS));
static_assert(IsNumbered(XlWizardMessage::kDrawItem, WM_DRAWITEM));
static_assert(IsNumbered(XlWizardMessage::kSetScrollInfo, SBM_SETSCROLLINFO));
static_assert(IsNumbered(XlWizardMessage::kCommand, WM_COMMAND));
static_assert(IsNumbered(XlWizardMessage::kThemeChanged, WM_THEMECHANGED));

// Null if none is installed.
CWizardHook* Installed() { return static_cast<CWizardHook*>(State().app.wizard_hook); }

// Windows has called these, and no exception can go back through it: one ends the process here, on
// 32 and 64 bit alike.
LRESULT CALLBACK AfterMessage(int code, WPARAM current, LPARAM sent) noexcept {
  if (CWizardHook* const hook = Installed(); hook != nullptr && code == HC_ACTION) {
    hook->OnMessage(*reinterpret_cast<const CWPRETSTRUCT*>(sent));
  }
  return CallNextHookEx(nullptr, code, current, sent);
}

LRESULT CALLBACK OnKeyboard(int code, WPARAM key, LPARAM flags) noexcept {
  constexpr LPARAM kReleased = LPARAM{1} << 31;
  CWizardHook* const hook = Installed();
  if (hook != nullptr && code == HC_ACTION && hook->OnKey(key, (flags & kReleased) == 0)) return 1;
  return CallNextHookEx(nullptr, code, key, flags);
}

// On this thread. Throws with the text of `format`, given the system's code, if there is none.
HHOOK SetHook(int kind, HOOKPROC procedure, const char* format) {
  const HHOOK hook = SetWindowsHookExA(kind, procedure, nullptr, GetCurrentThreadId());
  if (hook != nullptr) return hook;
  char text[80] = {};
  std::snprintf(text, sizeof text, format, GetLastError());
  throw CXlRuntimeException(std::string(text));
}

int WindowsMajorVersion() {
  constexpr int kUnknown = 5;
  OSVERSIONINFOA version{};
  version.dwOSVersionInfoSize = sizeof version;
  return GetVersionExA(&version) != 0 ? static_cast<int>(version.dwMajorVersion) : kUnknown;
}

HFONT CreateButtonFont() {
  constexpr int kHeight = 12;
  return CreateFontA(kHeight, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, nullptr);
}

// A screen that doesn't tell is an ordinary one.
int ScreenDpi() {
  constexpr int kNormalDpi = 96;
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return dpi > 0 ? dpi : kNormalDpi;
}

// A class given by its number is none that we look for.
bool IsDialogCreated(const CWPRETSTRUCT& sent) {
  return HasClass(sent.hwnd, kWizardDialogClass) &&
         !IS_INTRESOURCE(reinterpret_cast<const CREATESTRUCTA*>(sent.lParam)->lpszClass);
}

}  // namespace

void CWizardHook::Install() {
  if (Installed() != nullptr) {
    throw CXlRuntimeException("An instance of CWizardHook is already installed");
  }
  INITCOMMONCONTROLSEX controls{};
  controls.dwSize = sizeof controls;
  controls.dwICC = ICC_STANDARD_CLASSES | ICC_USEREX_CLASSES;
  InitCommonControlsEx(&controls);
  StartHooks();
  thread_ = GetCurrentThreadId();
  cursor_ = LoadCursorA(nullptr, IDC_ARROW);
  font_ = CreateButtonFont();
  windows_major_ = WindowsMajorVersion();
  State().app.wizard_hook = this;
}

void CWizardHook::StartHooks() {
  message_hook_ = SetHook(WH_CALLWNDPROCRET, AfterMessage,
                          "SetWindowsHookEx failed for WH_CALLWNDPROCRET. hr=%lx");
  try {
    keyboard_hook_ =
        SetHook(WH_KEYBOARD, OnKeyboard, "SetWindowsHookEx failed for WH_KEYBOARD. hr=%lx");
  } catch (...) {
    UnhookWindowsHookEx(message_hook_);
    throw;
  }
}

// A dialog that is open loses its extensions: the registry is about to forget the function.
void CWizardHook::Remove() {
  if (thread_ == kNoThread) return;
  UnhookWindowsHookEx(message_hook_);
  UnhookWindowsHookEx(keyboard_hook_);
  LeaveDialog();
  DeleteObject(font_);
  theme_.Unload();
  thread_ = kNoThread;
  State().app.wizard_hook = nullptr;
}

XlWizardState CWizardHook::Standing() const {
  return {is_in_dialog_, controls_.Exist(), is_layout_pending_, theme_.IsTried(),
          dialog_.used_boxes};
}

// What a message points to is read once the window is known: programs send these numbers to windows
// of their own as well, with anything or nothing behind the pointer.
XlWizardTarget CWizardHook::TargetOf(const CWPRETSTRUCT& sent) const {
  XlWizardTarget target;
  if (is_in_dialog_) {
    target.is_dialog = sent.hwnd == dialog_.window;
    target.is_scroll_bar = sent.hwnd == dialog_.scroll_bar;
    target.box = dialog_.boxes.IndexOf(sent.hwnd);
  }
  switch (sent.message) {
    case WM_CREATE:
      target.has_dialog_class = !is_in_dialog_ && IsDialogCreated(sent);
      break;
    case WM_ACTIVATE:
      target.has_dialog_class = !is_in_dialog_ && HasClass(sent.hwnd, kWizardDialogClass);
      target.is_activated = LOWORD(sent.wParam) != WA_INACTIVE;
      break;
    case WM_DRAWITEM: {
      if (!target.is_dialog) break;
      const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(sent.lParam);
      target.is_button_drawn = controls_.BoxOfButton(item.hwndItem) >= 0;
      break;
    }
    case SBM_SETSCROLLINFO: {
      if (!target.is_scroll_bar) break;
      const auto& info = *reinterpret_cast<const SCROLLINFO*>(sent.lParam);
      target.is_scrolled = (info.fMask & SIF_POS) != 0 && info.nPos != scroll_position_;
      break;
    }
    default:
      break;
  }
  return target;
}

void CWizardHook::OnMessage(const CWPRETSTRUCT& sent) {
  if (!IsWizardMessage(sent.message)) return;
  const auto message = static_cast<XlWizardMessage>(sent.message);
  switch (WizardStep(message, Standing(), TargetOf(sent))) {
    case XlWizardStep::kNone:
      break;
    case XlWizardStep::kExpectDialog:
      ExpectDialog();
      break;
    case XlWizardStep::kAttach:
      Attach(sent.hwnd);
      break;
    case XlWizardStep::kLeaveDialog:
      LeaveDialog();
      break;
    case XlWizardStep::kBuildAfterSize:
      BuildControls();
      is_layout_pending_ = false;
      break;
    case XlWizardStep::kBuild:
      BuildControls();
      break;
    case XlWizardStep::kNoteFocus:
      current_box_ = dialog_.boxes.IndexOf(sent.hwnd);
      break;
    case XlWizardStep::kDraw:
      DrawControl(*reinterpret_cast<const DRAWITEMSTRUCT*>(sent.lParam));
      break;
    case XlWizardStep::kCommand:
      OnCommand(reinterpret_cast<HWND>(sent.lParam), HIWORD(sent.wParam));
      break;
    case XlWizardStep::kCloseTheme:
      theme_.Close();
      break;
  }
}

void CWizardHook::ExpectDialog() {
  function_name_.reset();
  is_layout_pending_ = true;
}

void CWizardHook::Attach(HWND window) {
  const std::optional<XlWizardDialog> dialog = LookAtDialog(window);
  if (!dialog) {
    LeaveDialog();
    return;
  }
  dialog_ = *dialog;
  is_in_dialog_ = true;
  FindFunction();
  BuildControls();
}

void CWizardHook::LeaveDialog() {
  controls_.Destroy();
  dialog_ = {};
  scroll_position_ = 0;
  current_box_ = -1;
  function_name_.reset();
  function_ = nullptr;
  is_in_dialog_ = false;
}

// A dialog that was known to show one function and now shows another isn't extended.
void CWizardHook::FindFunction() {
  function_ = nullptr;
  const std::optional<std::string> name = FunctionNameIn(dialog_.window);
  if (!name || (function_name_ && *function_name_ != *name)) return;
  function_name_ = name;
  if (registry_ != nullptr) function_ = registry_->Find(*name);
}

void CWizardHook::BuildControls() {
  controls_.Destroy();
  if (function_ == nullptr || !function_->HasExtensions()) return;
  theme_.Load(dialog_.window);
  scroll_position_ = dialog_.ScrollPosition();
  controls_.Build(dialog_, {ScreenDpi(), windows_major_, theme_.IsOn()}, [this](int box) {
    return HasVisibleStyle(dialog_.boxes[box]) ? KindOf(box) : XlWizardKind::kNone;
  });
}

void CWizardHook::DrawControl(const DRAWITEMSTRUCT& item) const {
  const bool is_pressed = (item.itemState & ODS_SELECTED) != 0;
  FillRect(item.hDC, &item.rcItem, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  switch (KindOf(controls_.BoxOfButton(item.hwndItem))) {
    case XlWizardKind::kList:
      theme_.DrawArrow(item.hDC, item.rcItem, is_pressed);
      break;
    case XlWizardKind::kButton:
      theme_.DrawButton(item.hDC, item.rcItem, is_pressed, font_);
      break;
    case XlWizardKind::kNone:
      break;
  }
}

void CWizardHook::OnCommand(HWND control, WORD code) {
  if (const int box = controls_.BoxOfButton(control); box >= 0 && code == BN_CLICKED) {
    FocusBox(box);
    RunAction(box);
  } else if (control != nullptr && control == controls_.List()) {
    if (code == CBN_CLOSEUP) controls_.HideList();
    if (code == CBN_SELENDOK) controls_.TakeSelection(dialog_);
  } else if (const int covered = controls_.CoveredBox();
             covered >= 0 && control == dialog_.boxes[covered] && code == EN_CHANGE) {
    controls_.CopyToList(dialog_);
  }
}

}  // namespace quantiverse
