#pragma once

#include <cstddef>
#include <string>

#include "addin/services/wizard_rules.h"
#include "addin/windows/windows.h"

// Small questions to windows, and the orders that the wizard's hook gives them.
namespace quantiverse {

// Empty for a window that is gone.
std::string ClassOf(HWND window);
inline bool HasClass(HWND window, std::string_view name) { return ClassOf(window) == name; }

// Whether it is to be seen once its parents are.
inline bool HasVisibleStyle(HWND window) {
  return (static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE)) & WS_VISIBLE) != 0;
}

inline constexpr std::size_t kAnyLength = static_cast<std::size_t>(-1);
std::u16string TextOf(HWND window, std::size_t limit = kAnyLength);
void SetTextOf(HWND window, const std::u16string& text);

// In the coordinates of `parent`.
XlRect PlaceOf(HWND window, HWND parent);

// Puts the focus on an edit box of Excel's. The dialog keeps an idea of its own of the active
// field, which only a click with the mouse changes: so the mouse makes one, and goes back.
// All messages that wait are handled on the way; the dialog may be gone afterwards.
// arrow: what the mouse looks like when it is back.
void FocusByClick(HWND box, HCURSOR arrow);

}  // namespace quantiverse
