// What the user does to the wizard's controls, by mouse and by key.
#include <utility>

#include "addin/windows/wizard_hook.h"
#include "addin/windows/wizard_windows.h"

namespace quantiverse {
namespace {

bool IsDown(int key) { return GetAsyncKeyState(key) < 0; }

}  // namespace

XlWizardKind CWizardHook::KindOf(int box) const {
  if (function_ == nullptr || box < 0) return XlWizardKind::kNone;
  return function_->KindOf(scroll_position_ + box);
}

void CWizardHook::FocusBox(int box) {
  if (is_in_dialog_) FocusByClick(dialog_.boxes[box], cursor_);
}

void CWizardHook::RunAction(int box) {
  switch (KindOf(box)) {
    case XlWizardKind::kList:
      ShowList(box);
      break;
    case XlWizardKind::kButton:
      RunButton(box);
      break;
    case XlWizardKind::kNone:
      break;
  }
}

void CWizardHook::ShowList(int box) {
  const IXlWizardList* const items = function_->List(scroll_position_ + box);
  if (items != nullptr) controls_.ShowList(dialog_, box, *items);
}

// The button may show a dialog of its own, during which ours must not change, though it may be
// closed by others.
void CWizardHook::RunButton(int box) {
  constexpr std::size_t kTextLimit = 256;
  IXlWizardButton* const button = function_->Button(scroll_position_ + box);
  if (button == nullptr) return;
  const HWND dialog = dialog_.window;
  const HWND field = dialog_.boxes[box];
  std::u16string text = TextOf(field, kTextLimit);
  EnableWindow(dialog, FALSE);
  const bool has_changed = button->Edit(text, reinterpret_cast<std::uintptr_t>(GetParent(dialog)));
  if (has_changed) SetTextOf(field, text);
  EnableWindow(dialog, TRUE);
  if (dialog_.window != dialog) return;
  FocusBox(box);
  is_layout_pending_ = true;
}

// A key stays in the queue until its hook has answered: an action that handles messages meets its
// own key again, and eats it there.
bool CWizardHook::OnKey(WPARAM key, bool is_pressed) {
  if (!is_pressed) {
    if (key == key_at_work_) key_at_work_ = 0;
    return false;
  }
  if (key == key_at_work_) return true;
  const WPARAM before = std::exchange(key_at_work_, key);
  const bool is_eaten = OnKeyPressed(key);
  key_at_work_ = before;
  return is_eaten;
}

bool CWizardHook::OnKeyPressed(WPARAM key) {
  if (!controls_.Exist() || current_box_ < 0) return false;
  const XlWizardKind kind = KindOf(current_box_);
  if (kind == XlWizardKind::kNone) return false;
  if (controls_.HasListFocus()) return OnListKey(key);
  const HWND field = dialog_.boxes[current_box_];
  const XlWizardTrigger* const trigger = registry_->Trigger(kind);
  if (trigger == nullptr || key != trigger->key || GetFocus() != field) return false;
  if (trigger->modifier != 0 && !IsDown(trigger->modifier)) return false;
  if (!WizardModeAllows(trigger->mode, TextOf(field))) return false;
  RunAction(current_box_);
  return true;
}

// The arrows are eaten as well: the list, if it got them, would go one item further.
bool CWizardHook::OnListKey(WPARAM key) {
  switch (key) {
    case VK_TAB:
      LeaveList(IsDown(VK_SHIFT));
      return true;
    case VK_UP:
      controls_.MoveSelection(-1);
      return true;
    case VK_DOWN:
      controls_.MoveSelection(1);
      return true;
    default:
      return false;
  }
}

// Where to go is settled first: the focus wanders while the list closes.
void CWizardHook::LeaveList(bool backwards) {
  const int next = NextWizardBox(current_box_, dialog_.used_boxes, backwards);
  if (SendMessageA(controls_.List(), CB_GETDROPPEDSTATE, 0, 0) != 0) {
    controls_.TakeSelection(dialog_);
    SendMessageA(controls_.List(), CB_SHOWDROPDOWN, FALSE, 0);  // which hides it, by CBN_CLOSEUP
  }
  controls_.HideList();
  FocusBox(next);
}

}  // namespace quantiverse
