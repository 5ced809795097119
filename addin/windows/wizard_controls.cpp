#include "addin/windows/wizard_controls.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "addin/windows/wizard_windows.h"

namespace quantiverse {
namespace {

// A button that its parent draws; a list with a field to type in, not to be seen yet.
constexpr DWORD kButtonStyle = 0x5000000B;
constexpr DWORD kListStyle = 0x40200202;
static_assert(kButtonStyle == (WS_CHILD | WS_VISIBLE | BS_OWNERDRAW));
static_assert(kListStyle == (WS_CHILD | WS_VSCROLL | CBS_HASSTRINGS | CBS_DROPDOWN));

constexpr int kListWidth = 80;
constexpr int kListHeight = 160;  // dropped down

// A window of wide texts, whatever the dialog is.
HWND CreateChild(HWND dialog, const wchar_t* class_name, const wchar_t* text, DWORD style,
                 int width, int height) {
  auto* const module = reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(dialog, GWLP_HINSTANCE));
  return CreateWindowExW(0, class_name, text, style, 0, 0, width, height, dialog, nullptr, module,
                         nullptr);
}

void Place(HWND window, const XlRect& place) {
  SetWindowPos(window, HWND_TOP, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOACTIVATE);
}

BOOL CALLBACK KeepChild(HWND child, LPARAM children) noexcept {
  reinterpret_cast<std::vector<HWND>*>(children)->push_back(child);
  return TRUE;
}

XlWizardChild Describe(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return {ClassOf(window), static_cast<int>(place.left), HasVisibleStyle(window)};
}

}  // namespace

int CWizardWindows::IndexOf(HWND window) const {
  const auto found = std::find(windows_.begin(), windows_.end(), window);
  return found != windows_.end() ? static_cast<int>(found - windows_.begin()) : -1;
}

int XlWizardDialog::ScrollPosition() const {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_POS;
  SendMessageA(scroll_bar, SBM_GETSCROLLINFO, 0, reinterpret_cast<LPARAM>(&info));
  return info.nPos;
}

std::optional<XlWizardDialog> LookAtDialog(HWND window) {
  std::vector<HWND> windows;
  EnumChildWindows(window, KeepChild, reinterpret_cast<LPARAM>(&windows));
  std::vector<XlWizardChild> children(windows.size());
  std::transform(windows.begin(), windows.end(), children.begin(), Describe);
  const std::optional<int> used_boxes = CountWizardBoxes(children);
  if (!used_boxes) return std::nullopt;
  XlWizardDialog dialog;
  dialog.window = window;
  for (int box = 0; box < kWizardBoxes; ++box) {
    dialog.boxes[box] = windows[static_cast<std::size_t>(box)];
  }
  dialog.used_boxes = *used_boxes;
  dialog.scroll_bar = windows.back();
  return dialog;
}

void CWizardControls::AddButton(const XlWizardDialog& dialog, int box, XlWizardKind kind,
                                const XlWizardLook& look) {
  const HWND button = CreateChild(dialog.window, L"BUTTON", L"...", kButtonStyle, 0, 0);
  if (button == nullptr) return;
  buttons_[box] = button;
  exist_ = true;
  Place(button, PlaceWizardButton(PlaceOf(dialog.boxes[box], dialog.window), kind, look));
}

// The list's field and the list proper come with numbers that controls of the dialog may have, too.
void CWizardControls::AddList(HWND dialog) {
  list_ = CreateChild(dialog, L"ComboBox", L"", kListStyle, kListWidth, kListHeight);
  COMBOBOXINFO inner{};
  inner.cbSize = sizeof inner;
  if (list_ == nullptr || GetComboBoxInfo(list_, &inner) == 0) return;
  for (const HWND window : {inner.hwndItem, inner.hwndList}) {
    if (window != nullptr) SetWindowLongPtrA(window, GWLP_ID, 0);
  }
}

// A window that goes tells the dialog this and that, and by then it isn't ours any more.
void CWizardControls::Destroy() {
  const CWizardControls before = std::exchange(*this, CWizardControls());
  if (before.list_ != nullptr) DestroyWindow(before.list_);
  for (int box = 0; box < kWizardBoxes; ++box) {
    if (before.buttons_[box] != nullptr) DestroyWindow(before.buttons_[box]);
  }
}

bool CWizardControls::HasListFocus() const {
  const HWND focus = GetFocus();
  return covered_box_ >= 0 && focus != nullptr && (focus == list_ || IsChild(list_, focus) != 0);
}

void CWizardControls::ShowList(const XlWizardDialog& dialog, int box, const IXlWizardList& items) {
  HideList();
  if (list_ == nullptr) return;
  const HWND list = list_;
  covered_box_ = box;
  const LRESULT font = SendMessageA(dialog.window, WM_GETFONT, 0, 0);
  SendMessageA(list, WM_SETFONT, static_cast<WPARAM>(font), TRUE);
  SendMessageA(list, CB_RESETCONTENT, 0, 0);
  for (int i = 0, count = items.ItemCount(); i < count; ++i) {
    SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(items.Item(i).c_str()));
  }
  if (list_ != list) return;  // the items have done something to the dialog
  CopyToList(dialog);
  XlRect place = PlaceOf(dialog.boxes[box], dialog.window);
  place.bottom = place.top + kListHeight;
  Place(list, place);
  ShowWindow(buttons_[box], SW_HIDE);
  ShowWindow(list, SW_SHOW);
  SetFocus(list);
  SendMessageA(list, CB_SHOWDROPDOWN, TRUE, 0);
}

void CWizardControls::CopyToList(const XlWizardDialog& dialog) const {
  if (covered_box_ < 0) return;
  const HWND box = dialog.boxes[covered_box_];
  SetTextOf(list_, TextOf(box));
  DWORD begin = 0;
  DWORD end = 0;
  SendMessageW(box, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
  SendMessageW(list_, CB_SETEDITSEL, 0,
               MAKELPARAM(static_cast<WORD>(begin), static_cast<WORD>(end)));
}

void CWizardControls::TakeSelection(const XlWizardDialog& dialog) const {
  const LRESULT selected = SendMessageA(list_, CB_GETCURSEL, 0, 0);
  if (covered_box_ < 0 || selected < 0) return;
  const auto item = static_cast<WPARAM>(selected);
  const LRESULT length = SendMessageW(list_, CB_GETLBTEXTLEN, item, 0);
  if (length < 0) return;
  std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');  // with the NUL
  const LRESULT read =
      SendMessageW(list_, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(text.data()));
  if (read < 0) return;
  text.resize(static_cast<std::size_t>(read));
  SetTextOf(dialog.boxes[covered_box_], text);
}

void CWizardControls::MoveSelection(int step) const {
  const auto selected = static_cast<int>(SendMessageA(list_, CB_GETCURSEL, 0, 0));
  const auto count = static_cast<int>(SendMessageA(list_, CB_GETCOUNT, 0, 0));
  const int next = MoveWizardSelection(selected, step, count);
  if (next >= 0) SendMessageA(list_, CB_SETCURSEL, static_cast<WPARAM>(next), 0);
}

// Windows gives the focus to the dialog, and that to the field that it takes for the active one.
void CWizardControls::HideList() {
  if (covered_box_ < 0) return;
  const int box = std::exchange(covered_box_, -1);
  ShowWindow(list_, SW_HIDE);
  ShowWindow(buttons_[box], SW_SHOW);
}

}  // namespace quantiverse
