#include "addin/windows/wizard_theme.h"

#include <string>
#include <utility>

namespace quantiverse {
namespace {

// Parts and states of themes.
constexpr int kDropDownButton = 1;
constexpr int kPushButton = 1;
constexpr int kNormal = 1;
constexpr int kPressed = 3;

constexpr UINT kCentred = DT_CENTER | DT_VCENTER | DT_SINGLELINE;

// From the system's folder and no other: a file of that name beside the workbook isn't it.
HMODULE LoadSystemLibrary(const wchar_t* name) {
  wchar_t folder[MAX_PATH] = {};
  const UINT length = GetSystemDirectoryW(folder, std::size(folder));
  if (length == 0 || length >= std::size(folder)) return nullptr;
  return LoadLibraryW((std::wstring(folder) + L'\\' + name).c_str());
}

template <typename Function>
bool Find(HMODULE library, const char* name, Function*& function) {
  function = FunctionFrom<Function>(library, name);
  return function != nullptr;
}

}  // namespace

bool CWizardTheme::LoadFunctions() {
  if (library_ != nullptr) return functions_.open != nullptr;
  library_ = LoadSystemLibrary(L"UxTheme.dll");
  if (library_ == nullptr) return false;
  XlThemeFunctions found;
  const bool has_all = Find(library_, "OpenThemeData", found.open) &&
                       Find(library_, "DrawThemeBackground", found.draw_background) &&
                       Find(library_, "GetThemeBackgroundContentRect", found.content_rect) &&
                       Find(library_, "DrawThemeText", found.draw_text) &&
                       Find(library_, "CloseThemeData", found.close) &&
                       Find(library_, "GetThemePartSize", found.part_size);
  if (has_all) functions_ = found;
  return has_all;
}

void CWizardTheme::Load(HWND window) {
  if (is_tried_) return;
  is_tried_ = true;
  if (!LoadFunctions()) return;
  combo_box_ = functions_.open(window, L"COMBOBOX");
  button_ = functions_.open(window, L"BUTTON");
}

void CWizardTheme::Close() {
  for (HTHEME* const theme : {&combo_box_, &button_}) {
    if (*theme != nullptr) functions_.close(std::exchange(*theme, nullptr));
  }
  is_tried_ = false;
}

void CWizardTheme::Unload() {
  Close();
  functions_ = {};
  if (library_ != nullptr) FreeLibrary(std::exchange(library_, nullptr));
}

void CWizardTheme::DrawArrow(HDC context, RECT place, bool is_pressed) const {
  if (combo_box_ != nullptr) {
    functions_.draw_background(combo_box_, context, kDropDownButton,
                               is_pressed ? kPressed : kNormal, &place, nullptr);
    return;
  }
  DrawFrameControl(context, &place, DFC_SCROLL,
                   DFCS_SCROLLCOMBOBOX | (is_pressed ? DFCS_PUSHED : 0U));
}

void CWizardTheme::DrawButton(HDC context, RECT place, bool is_pressed, HFONT font) const {
  const HGDIOBJ font_before = SelectObject(context, font);
  if (button_ != nullptr) {
    const int state = is_pressed ? kPressed : kNormal;
    functions_.draw_background(button_, context, kPushButton, state, &place, nullptr);
    RECT content = place;
    functions_.content_rect(button_, context, kPushButton, state, &place, &content);
    functions_.draw_text(button_, context, kPushButton, state, L"...", -1, kCentred, 0, &content);
  } else {
    DrawFrameControl(context, &place, DFC_BUTTON,
                     DFCS_BUTTONPUSH | (is_pressed ? DFCS_PUSHED : 0U));
    const int mode_before = SetBkMode(context, TRANSPARENT);
    DrawTextA(context, "...", -1, &place, kCentred);
    SetBkMode(context, mode_before);
  }
  SelectObject(context, font_before);
}

}  // namespace quantiverse
