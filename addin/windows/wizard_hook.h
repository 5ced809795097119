#pragma once

#include <optional>
#include <string>

#include "addin/services/wizard.h"
#include "addin/services/wizard_rules.h"
#include "addin/windows/windows.h"
#include "addin/windows/wizard_controls.h"
#include "addin/windows/wizard_theme.h"

namespace quantiverse {

// Extends Excel's Function Arguments dialog from outside. Excel has no interface for that, so this
// looks at the messages and keys of Excel's main thread by two hooks of Windows, knows the dialog
// by the windows it is made of, and adds controls to it for a function that the registry has. A
// dialog of any other shape is left alone, without a word.
//
// Installed it is outside of the dialog, or in it. All on the thread that installs it. The hook
// procedures find it through AppState::wizard_hook.
class CWizardHook final : public IXlWizardHook {
 public:
  CWizardHook() = default;
  ~CWizardHook() override { Remove(); }

  void Connect(const IXlWizExUIFunctionRegistry& registry) override { registry_ = &registry; }
  [[nodiscard]] bool IsConnected() const override { return registry_ != nullptr; }
  void Install() override;
  void Uninstall() override { Remove(); }

  // What the hook procedures hand on. Both may handle other messages on their way, and find the
  // dialog gone.
  void OnMessage(const CWPRETSTRUCT& sent);
  // true: the key is eaten.
  bool OnKey(WPARAM key, bool is_pressed);

 private:
  void Remove();
  void StartHooks();

  // Messages.
  [[nodiscard]] XlWizardState Standing() const;
  [[nodiscard]] XlWizardTarget TargetOf(const CWPRETSTRUCT& sent) const;
  void ExpectDialog();
  void Attach(HWND window);
  void LeaveDialog();
  void FindFunction();
  void BuildControls();
  void DrawControl(const DRAWITEMSTRUCT& item) const;
  void OnCommand(HWND control, WORD code);

  // Actions.
  // Of the argument that an edit box shows.
  [[nodiscard]] XlWizardKind KindOf(int box) const;
  // What the button of an edit box does.
  void RunAction(int box);
  void ShowList(int box);
  void RunButton(int box);
  void FocusBox(int box);
  bool OnKeyPressed(WPARAM key);
  bool OnListKey(WPARAM key);
  void LeaveList(bool backwards);

  HHOOK message_hook_ = nullptr;
  HHOOK keyboard_hook_ = nullptr;
  DWORD thread_ = kNoThread;
  int windows_major_ = 0;
  HCURSOR cursor_ = nullptr;  // the system's
  HFONT font_ = nullptr;      // of the drawn button
  CWizardTheme theme_;
  bool is_in_dialog_ = false;
  XlWizardDialog dialog_;
  CWizardControls controls_;
  int scroll_position_ = 0;  // the argument in the top edit box
  bool is_layout_pending_ = false;
  std::optional<std::string> function_name_;  // once known
  int current_box_ = -1;                      // the last that got the focus
  WPARAM key_at_work_ = 0;                    // the one whose action runs, if it is still down
  const IXlWizExUIFunctionRegistry* registry_ = nullptr;
  const IXlWizExUIFunction* function_ = nullptr;  // null for one with no extension

  static constexpr DWORD kNoThread = static_cast<DWORD>(-1);
};

}  // namespace quantiverse
