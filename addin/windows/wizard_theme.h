#pragma once

// The second needs the first.
// clang-format off
#include "addin/windows/windows.h"
#include <uxtheme.h>
// clang-format on

namespace quantiverse {

// The six functions of the theme library that draw controls. Not every Windows has it, so it is
// loaded at run time.
struct XlThemeFunctions {
  decltype(&::OpenThemeData) open = nullptr;
  decltype(&::DrawThemeBackground) draw_background = nullptr;
  decltype(&::GetThemeBackgroundContentRect) content_rect = nullptr;
  decltype(&::DrawThemeText) draw_text = nullptr;
  decltype(&::CloseThemeData) close = nullptr;
  decltype(&::GetThemePartSize) part_size = nullptr;
};

// How the wizard's controls look: as the user's theme has it, or as Windows always had it.
class CWizardTheme {
 public:
  CWizardTheme() = default;
  CWizardTheme(const CWizardTheme&) = delete;
  CWizardTheme& operator=(const CWizardTheme&) = delete;
  ~CWizardTheme() { Unload(); }

  // Looks for the theme as `window` sees it, unless that was tried already. None is no failure.
  void Load(HWND window);
  [[nodiscard]] bool IsTried() const { return is_tried_; }
  [[nodiscard]] bool IsOn() const { return combo_box_ != nullptr && button_ != nullptr; }
  // The theme is to be tried anew.
  void Close();
  // Closes it and lets the library go.
  void Unload();

  // The arrow of a list.
  void DrawArrow(HDC context, RECT place, bool is_pressed) const;
  // A button with three dots.
  void DrawButton(HDC context, RECT place, bool is_pressed, HFONT font) const;

 private:
  bool LoadFunctions();

  HMODULE library_ = nullptr;
  XlThemeFunctions functions_;
  HTHEME combo_box_ = nullptr;
  HTHEME button_ = nullptr;
  bool is_tried_ = false;
};

}  // namespace quantiverse
