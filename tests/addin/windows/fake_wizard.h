#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include "addin/windows/wizard_windows.h"
#include "fake_accessible.h"

namespace quantiverse {

// A dialog as Excel's Function Arguments: its windows, of the same classes, and its accessible
// surface. The main window behind it is one, too.
class FakeWizard {
 public:
  static constexpr int kLeft = 60;
  static constexpr int kWidth = 160;

  struct Shape {
    int boxes = 5;
    int visible = 5;
    bool has_scroll_bar = true;
    int last_left = kLeft;      // of the last box
    bool is_by_number = false;  // its class, as it is made
  };

  FakeWizard() : FakeWizard(Shape{}, L"f") {}
  // name: of the function that it shows, as element 18.
  FakeWizard(const Shape& shape, const wchar_t* name) {
    RegisterClasses();
    surface.value = [name](long element) { return element == 18 ? name : nullptr; };
    Open(shape);
  }
  // Shows a surface that it is given, made by the caller.
  template <typename Prepare>
  explicit FakeWizard(Prepare prepare) {
    RegisterClasses();
    prepare(surface);
    Open({});
  }
  FakeWizard(const FakeWizard&) = delete;
  FakeWizard& operator=(const FakeWizard&) = delete;
  ~FakeWizard() { DestroyWindow(excel); }

  // The children of a class.
  [[nodiscard]] std::vector<HWND> Children(const char* class_name) const {
    std::vector<HWND> found;
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
      if (HasClass(child, class_name)) found.push_back(child);
    }
    return found;
  }
  // The button or arrow over a box: its right end is beside the box's. Null if there is none.
  [[nodiscard]] HWND ButtonOf(int box) const {
    const int top = PlaceOf(boxes[static_cast<std::size_t>(box)], dialog).top;
    for (const HWND button : Children("Button")) {
      if (std::abs(PlaceOf(button, dialog).top - top) < 10) return button;
    }
    return nullptr;
  }
  // Null if there is none.
  [[nodiscard]] HWND List() const {
    const auto lists = Children("ComboBox");
    return lists.size() == 1 ? lists.front() : nullptr;
  }
  [[nodiscard]] HWND Box(int i) const { return boxes[static_cast<std::size_t>(i)]; }

  FakeAccessible surface;
  HWND excel = nullptr;
  HWND dialog = nullptr;
  std::vector<HWND> boxes;
  HWND scroll_bar = nullptr;

 private:
  static constexpr int kTop = 20;
  static constexpr int kDistance = 30;

  void Open(const Shape& shape) {
    excel = CreateWindowA("QvExcel", "Excel", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 600, 500,
                          nullptr, nullptr, nullptr, nullptr);
    const char* const class_name = shape.is_by_number ? DialogClassNumber() : "bosa_sdm_XL9";
    dialog = CreateWindowA(class_name, "Function Arguments", WS_POPUP | WS_CAPTION, 50, 50, 400,
                           300, excel, nullptr, nullptr, nullptr);
    SetWindowLongPtrA(dialog, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    for (int i = 0; i < shape.boxes; ++i) {
      const bool is_last = i == shape.boxes - 1;
      boxes.push_back(CreateWindowW(L"EDTBX", L"", WS_CHILD | (i < shape.visible ? WS_VISIBLE : 0),
                                    is_last ? shape.last_left : kLeft, kTop + i * kDistance, kWidth,
                                    20, dialog, nullptr, nullptr, nullptr));
    }
    if (shape.has_scroll_bar) {
      scroll_bar = CreateWindowA("ScrollBar", "", WS_CHILD | WS_VISIBLE | SBS_VERT, 300, kTop, 16,
                                 5 * kDistance, dialog, nullptr, nullptr, nullptr);
      SCROLLINFO range{sizeof range, SIF_RANGE | SIF_PAGE, 0, 10, 5, 0, 0};
      SetScrollInfo(scroll_bar, SB_CTL, &range, FALSE);
    }
    ShowWindow(dialog, SW_SHOW);
    SetForegroundWindow(dialog);
  }

  static void RegisterClasses() {
    WNDCLASSA excel_class{};
    excel_class.lpfnWndProc = DefWindowProcA;
    excel_class.lpszClassName = "QvExcel";
    RegisterClassA(&excel_class);
    WNDCLASSA dialog_class{};
    dialog_class.lpfnWndProc = OnDialog;
    dialog_class.lpszClassName = "bosa_sdm_XL9";
    RegisterClassA(&dialog_class);
    WNDCLASSW box_class{};
    box_class.lpfnWndProc = OnBox;
    box_class.lpszClassName = L"EDTBX";
    RegisterClassW(&box_class);
  }

  static const char* DialogClassNumber() {
    WNDCLASSEXA dialog_class{};
    dialog_class.cbSize = sizeof dialog_class;
    return MAKEINTATOM(GetClassInfoExA(GetModuleHandleA(nullptr), "bosa_sdm_XL9", &dialog_class));
  }

  // An edit box whose second character is always selected.
  static LRESULT CALLBACK OnBox(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message == WM_LBUTTONDOWN) SetFocus(window);
    if (message == EM_GETSEL) {
      *reinterpret_cast<DWORD*>(w) = 1;
      *reinterpret_cast<DWORD*>(l) = 2;
      return MAKELRESULT(1, 2);
    }
    const LRESULT result = DefWindowProcW(window, message, w, l);
    if (message == WM_SETTEXT) {
      SendMessageW(GetParent(window), WM_COMMAND, MAKEWPARAM(0, EN_CHANGE),
                   reinterpret_cast<LPARAM>(window));
    }
    return result;
  }

  static LRESULT CALLBACK OnDialog(HWND window, UINT message, WPARAM w, LPARAM l) {
    auto* const wizard = reinterpret_cast<FakeWizard*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message == WM_GETOBJECT && static_cast<DWORD>(l) == static_cast<DWORD>(OBJID_WINDOW) &&
        wizard != nullptr) {
      return LresultFromObject(IID_IAccessible, w, &wizard->surface);
    }
    return DefWindowProcA(window, message, w, l);
  }
};

// What a button looks like: all its pixels.
inline std::vector<COLORREF> Draw(const FakeWizard& wizard, int box, bool is_pressed) {
  constexpr int kSize = 17;
  const HDC screen = GetDC(nullptr);
  const HDC context = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, kSize, kSize);
  const HGDIOBJ before = SelectObject(context, bitmap);
  DRAWITEMSTRUCT item{};
  item.CtlType = ODT_BUTTON;
  item.hwndItem = wizard.ButtonOf(box);
  item.itemState = is_pressed ? ODS_SELECTED : 0;
  item.hDC = context;
  item.rcItem = {0, 0, kSize, kSize};
  SendMessageA(wizard.dialog, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
  std::vector<COLORREF> pixels;
  for (int i = 0; i < kSize * kSize; ++i) {
    pixels.push_back(GetPixel(context, i % kSize, i / kSize));
  }
  SelectObject(context, before);
  DeleteObject(bitmap);
  DeleteDC(context);
  ReleaseDC(nullptr, screen);
  return pixels;
}

// Whether hooks get what WM_CREATE is about.
struct Creations {
  static inline bool are_seen = false;
  static LRESULT CALLBACK Spy(int, WPARAM, LPARAM sent) {
    const auto& message = *reinterpret_cast<const CWPRETSTRUCT*>(sent);
    if (message.message != WM_CREATE) return 0;
    are_seen = !IS_INTRESOURCE(reinterpret_cast<CREATESTRUCTA*>(message.lParam)->lpszClass);
    return 0;
  }
  static bool AreSeen() {
    const HHOOK spy = SetWindowsHookExA(WH_CALLWNDPROCRET, Spy, nullptr, GetCurrentThreadId());
    DestroyWindow(CreateWindowA("STATIC", "", 0, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr));
    UnhookWindowsHookEx(spy);
    return are_seen;
  }
};

// Handles the messages that wait, as Excel's loop does.
inline void HandleMessages() {
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

// Presses a key, with another held down if that isn't 0, as the user does.
inline void PressKey(WORD key, WORD modifier = 0) {
  std::vector<INPUT> inputs;
  const auto add = [&inputs](WORD code, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = code;
    input.ki.dwFlags = flags;
    inputs.push_back(input);
  };
  if (modifier != 0) add(modifier, 0);
  add(key, 0);
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof inputs[0]);
  HandleMessages();
  inputs.clear();
  add(key, KEYEVENTF_KEYUP);
  if (modifier != 0) add(modifier, KEYEVENTF_KEYUP);
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof inputs[0]);
  HandleMessages();
}

}  // namespace quantiverse
