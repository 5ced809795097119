#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "addin/services/wizard_rules.h"
#include "addin/windows/windows.h"

namespace quantiverse {

// An HWND for every edit box of the dialog, null for none.
class CWizardWindows {
 public:
  HWND& operator[](int box) { return windows_[static_cast<std::size_t>(box)]; }
  HWND operator[](int box) const { return windows_[static_cast<std::size_t>(box)]; }
  // -1 if it isn't among them.
  [[nodiscard]] int IndexOf(HWND window) const;

 private:
  std::array<HWND, kWizardBoxes> windows_{};
};

// The windows of Excel's that the dialog is made of.
struct XlWizardDialog {
  HWND window = nullptr;
  CWizardWindows boxes;
  int used_boxes = 0;
  HWND scroll_bar = nullptr;

  // The first argument that shows.
  [[nodiscard]] int ScrollPosition() const;
};

// Nothing if it isn't the wizard.
std::optional<XlWizardDialog> LookAtDialog(HWND window);

// The controls that the hook adds to a dialog: a button or an arrow in each edit box that has an
// extension, and one list for all of them, hidden until it covers a box. They are children of the
// dialog, which tells the hook of what happens to them by its messages.
class CWizardControls {
 public:
  // kind: of an edit box. Whatever was there before is destroyed.
  template <typename KindOfBox>
  void Build(const XlWizardDialog& dialog, XlWizardLook look, KindOfBox&& kind) {
    Destroy();
    for (int box = 0; box < kWizardBoxes; ++box) {
      const XlWizardKind wanted = kind(box);
      if (wanted != XlWizardKind::kNone) AddButton(dialog, box, wanted, look);
    }
    if (exist_) AddList(dialog.window);
  }
  void Destroy();

  [[nodiscard]] bool Exist() const { return exist_; }
  // The edit box that a button belongs to, -1 if it isn't one.
  [[nodiscard]] int BoxOfButton(HWND window) const {
    return window != nullptr ? buttons_.IndexOf(window) : -1;
  }
  [[nodiscard]] HWND List() const { return list_; }
  // -1 for none.
  [[nodiscard]] int CoveredBox() const { return covered_box_; }
  [[nodiscard]] bool HasListFocus() const;

  // Shows the list in the place of an edit box and its button, with the focus, dropped down.
  void ShowList(const XlWizardDialog& dialog, int box, const IXlWizardList& items);
  // What the covered box holds and has selected, in the list's own field.
  void CopyToList(const XlWizardDialog& dialog) const;
  // Writes the selected item into the covered box; nothing if there is none.
  void TakeSelection(const XlWizardDialog& dialog) const;
  void MoveSelection(int step) const;
  void HideList();

 private:
  void AddButton(const XlWizardDialog& dialog, int box, XlWizardKind kind,
                 const XlWizardLook& look);
  void AddList(HWND dialog);

  CWizardWindows buttons_;
  HWND list_ = nullptr;
  int covered_box_ = -1;
  bool exist_ = false;
};

}  // namespace quantiverse
