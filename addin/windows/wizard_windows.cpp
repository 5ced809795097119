#include "addin/windows/wizard_windows.h"

#include <algorithm>

namespace quantiverse {
namespace {

// The end of the program isn't ours to take: it goes back, for the loop that this runs inside of.
void HandleWaitingMessages() {
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    DispatchMessageA(&message);
  }
}

// What a window of somebody else's answers may be a code of failure.
std::size_t Count(LRESULT answer) { return answer > 0 ? static_cast<std::size_t>(answer) : 0; }

// The main button's, wherever the user has it.
INPUT MouseInput(DWORD left, DWORD right) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = GetSystemMetrics(SM_SWAPBUTTON) != 0 ? right : left;
  return input;
}

}  // namespace

std::string ClassOf(HWND window) {
  char name[50] = {};
  const int length = GetClassNameA(window, name, std::size(name));
  return {name, static_cast<std::size_t>(length)};
}

std::u16string TextOf(HWND window, std::size_t limit) {
  const std::size_t length = Count(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0));
  std::u16string text(std::min(length, limit) + 1, u'\0');  // with the NUL
  const std::size_t read =
      Count(SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data())));
  text.resize(std::min(read, text.size() - 1));
  return text;
}

void SetTextOf(HWND window, const std::u16string& text) {
  SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

XlRect PlaceOf(HWND window, HWND parent) {
  RECT place{};
  GetWindowRect(window, &place);
  MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
  return {place.left, place.top, place.right, place.bottom};
}

void FocusByClick(HWND box, HCURSOR arrow) {
  constexpr int kInside = 2;
  POINT before{};
  GetCursorPos(&before);
  RECT place{};
  GetWindowRect(box, &place);
  SetCursorPos(place.left + kInside, place.top + kInside);
  INPUT click[] = {MouseInput(MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_RIGHTDOWN),
                   MouseInput(MOUSEEVENTF_LEFTUP, MOUSEEVENTF_RIGHTUP)};
  SendInput(std::size(click), click, sizeof click[0]);
  HandleWaitingMessages();
  SetCursorPos(before.x, before.y);
  SetCursor(arrow);
}

}  // namespace quantiverse
