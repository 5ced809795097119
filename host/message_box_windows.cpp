#include <array>
#include <cstddef>
#include <cwchar>
#include <mutex>
#include <string>

#include "host/host.h"
#include "host/message_box.h"
#include "host/windows.h"

// Add-ins show real boxes. A hook sees each once it is filled in, reads it and has a button
// pressed.
namespace quantiverse::host {
namespace {

constexpr wchar_t kClassOfDialogs[] = L"#32770";

// Which buttons say yes and no, for each set of buttons in the order of its flags.
struct Buttons {
  int yes;
  int no;
};
constexpr std::array<Buttons, 7> kButtons = {{
    {IDOK, IDOK},
    {IDOK, IDCANCEL},
    {IDRETRY, IDABORT},
    {IDYES, IDNO},  // and cancel
    {IDYES, IDNO},
    {IDRETRY, IDCANCEL},
    {IDTRYAGAIN, IDCANCEL},
}};

bool is_of_class(HWND window, const wchar_t* name) {
  wchar_t own[32] = L"";
  GetClassNameW(window, own, static_cast<int>(std::size(own)));
  return _wcsicmp(own, name) == 0;
}

std::u16string text_of(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return {text.begin(), text.end()};
}

BOOL CALLBACK add_text(HWND child, LPARAM to) {
  const bool is_icon = (GetWindowLongW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
  if (is_of_class(child, L"Static") && !is_icon) {
    *reinterpret_cast<std::u16string*>(to) += text_of(child);
  }
  return TRUE;
}

// A message box is filled in from what it was asked with, which begins as the published record
// does. That isn't documented, but the icon, which is part of the flags, can't be read from the box
// where the system couldn't load it. Other dialogs bring something else, or no pointer at all.
bool read_request(LPARAM from, MSGBOXPARAMSW& request) {
  return ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<const void*>(from), &request,
                           sizeof request, nullptr) &&
         request.cbSize == sizeof request && (request.dwStyle & MB_TYPEMASK) < kButtons.size();
}

void answer(HWND dialog, const MSGBOXPARAMSW& request) {
  if (serving_host() == nullptr) return;
  std::u16string text;
  EnumChildWindows(dialog, add_text, reinterpret_cast<LPARAM>(&text));
  auto& host = *serving_host();
  const std::lock_guard lock(host.mutex);
  const Buttons& buttons = kButtons[request.dwStyle & MB_TYPEMASK];
  const bool is_yes = host.dialogs.answer_box(text, text_of(dialog), request.dwStyle);
  const int pressed = is_yes ? buttons.yes : buttons.no;
  // Posted: the box doesn't run yet.
  PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(pressed, BN_CLICKED),
               reinterpret_cast<LPARAM>(GetDlgItem(dialog, pressed)));
}

LRESULT CALLBACK see_message(int code, WPARAM wparam, LPARAM lparam) {
  const auto& seen = *reinterpret_cast<const CWPRETSTRUCT*>(lparam);
  MSGBOXPARAMSW request{};
  if (code == HC_ACTION && seen.message == WM_INITDIALOG &&
      is_of_class(seen.hwnd, kClassOfDialogs) && read_request(seen.lParam, request)) {
    answer(seen.hwnd, request);
  }
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

}  // namespace

BoxWatch::BoxWatch()
    : hook_(SetWindowsHookExW(WH_CALLWNDPROCRET, see_message, nullptr, GetCurrentThreadId())) {}

BoxWatch::~BoxWatch() {
  if (hook_ != nullptr) UnhookWindowsHookEx(static_cast<HHOOK>(hook_));
}

}  // namespace quantiverse::host
