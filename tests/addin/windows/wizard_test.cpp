#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "addin/exceptions.h"
#include "addin/platform_services.h"
#include "fake_wizard.h"

namespace quantiverse {
namespace {

class List final : public IXlWizardList {
 public:
  [[nodiscard]] int ItemCount() const override { return static_cast<int>(items.size()); }
  [[nodiscard]] std::u16string Item(int i) const override {
    return items[static_cast<std::size_t>(i)];
  }
  std::vector<std::u16string> items = {u"\"m\"", u"\"\u03A9\"", u"\"s\""};
};

class Button final : public IXlWizardButton {
 public:
  bool Edit(std::u16string& text, std::uintptr_t parent) override {
    return action(text, reinterpret_cast<HWND>(parent));
  }
  std::function<bool(std::u16string&, HWND)> action;
};

// Has a list, a button, nothing, a list and a button, and so on.
class Function final : public IXlWizExUIFunction {
 public:
  [[nodiscard]] bool HasExtensions() const override { return true; }
  [[nodiscard]] XlWizardKind KindOf(int argument) const override {
    constexpr XlWizardKind kKinds[] = {XlWizardKind::kList, XlWizardKind::kButton,
                                       XlWizardKind::kNone};
    return kKinds[argument % 3];
  }
  [[nodiscard]] IXlWizardList* List(int) const override { return list.get(); }
  [[nodiscard]] IXlWizardButton* Button(int) const override { return button.get(); }

  std::unique_ptr<quantiverse::List> list = std::make_unique<class List>();
  std::unique_ptr<quantiverse::Button> button = std::make_unique<class Button>();
};

class Wizard : public testing::Test {
 protected:
  Wizard() {
    CoInitialize(nullptr);
    registry.Add("f", function);
    hook->Connect(registry);
    hook->Install();
  }
  ~Wizard() override {
    hook->Uninstall();
    CoUninitialize();
  }

  std::shared_ptr<Function> function = std::make_shared<Function>();
  CXlWizExUIFunctionRegistry registry;
  std::unique_ptr<IXlWizardHook> hook = PlatformWizardHook();
};

std::string FailureOf(IXlWizardHook& hook) {
  try {
    hook.Install();
    return "";
  } catch (const CXlRuntimeException& e) {
    return e.what();
  }
}

// A letter for each box: a for an arrow, b for a button, - for neither.
std::string ControlsOf(const FakeWizard& wizard) {
  std::string controls;
  for (int box = 0; box < static_cast<int>(wizard.boxes.size()); ++box) {
    const HWND button = wizard.ButtonOf(box);
    if (button == nullptr) {
      controls += '-';
    } else {
      const XlRect place = PlaceOf(button, wizard.dialog);
      controls += place.bottom - place.top > 17 ? 'a' : 'b';
    }
  }
  return controls;
}

TEST(WizardHook, IsInstalledOnce) {
  const auto hook = PlatformWizardHook();
  hook->Uninstall();  // does nothing
  {
    const auto other = PlatformWizardHook();
    other->Install();
    EXPECT_EQ(FailureOf(*hook), "An instance of CWizardHook is already installed");
    EXPECT_EQ(FailureOf(*other), "An instance of CWizardHook is already installed");
  }  // which uninstalls it
  EXPECT_EQ(FailureOf(*hook), "");
  const FakeWizard wizard;  // without a registry nothing is extended
  EXPECT_EQ(ControlsOf(wizard), "-----");
  hook->Uninstall();
  EXPECT_EQ(FailureOf(*hook), "");
}

TEST(WizardDetectorOfWindows, ReadsWindows) {
  const auto detector = PlatformWizardDetector();
  const FakeWizard wizard;
  const auto window = reinterpret_cast<std::uintptr_t>(wizard.dialog);
  const auto low = static_cast<std::uint16_t>(reinterpret_cast<std::uintptr_t>(wizard.excel));
  EXPECT_TRUE(detector->IsWizardWindow(window, low));
  EXPECT_FALSE(detector->IsWizardWindow(window, static_cast<std::uint16_t>(low + 1)));
  EXPECT_FALSE(detector->IsWizardWindow(reinterpret_cast<std::uintptr_t>(wizard.Box(0)),
                                        static_cast<std::uint16_t>(window)));
  SetWindowTextA(wizard.dialog, "Find and Replace");
  EXPECT_FALSE(detector->IsWizardWindow(window, low));
}

TEST_F(Wizard, ExtendsTheDialogsOfItsFunctionsAlone) {
  const auto surface = [](std::function<void(FakeAccessible&)> prepare) { return prepare; };
  FakeAccessible element;
  element.value = [](long number) { return number == CHILDID_SELF ? L"f" : nullptr; };
  const struct {
    std::function<std::unique_ptr<FakeWizard>()> make;
    const char* expected;
  } cases[] = {
      {[] { return std::make_unique<FakeWizard>(); }, "ab-ab"},
      {[] { return std::make_unique<FakeWizard>(FakeWizard::Shape{.visible = 4}, L"f"); }, "ab-a-"},
      {[] { return std::make_unique<FakeWizard>(FakeWizard::Shape{}, L"g"); }, "-----"},
      {[] { return std::make_unique<FakeWizard>(FakeWizard::Shape{}, nullptr); }, "-----"},
      {[] { return std::make_unique<FakeWizard>(FakeWizard::Shape{.boxes = 4}, L"f"); }, "----"},
      {[] {
         return std::make_unique<FakeWizard>(FakeWizard::Shape{.has_scroll_bar = false}, L"f");
       },
       "-----"},
      {[] { return std::make_unique<FakeWizard>(FakeWizard::Shape{.last_left = 61}, L"f"); },
       "-----"},
      {[&] {
         return std::make_unique<FakeWizard>(surface([](FakeAccessible& dialog) {
           dialog.value = [](long number) { return number == 20 ? L"f" : nullptr; };
         }));
       },
       "ab-ab"},
      {[&] {
         return std::make_unique<FakeWizard>(surface([&](FakeAccessible& dialog) {
           dialog.child = [&](long number) { return number == 18 ? &element : nullptr; };
         }));
       },
       "ab-ab"},
  };
  for (const auto& c : cases) {
    const auto wizard = c.make();
    EXPECT_EQ(ControlsOf(*wizard), c.expected) << "row " << &c - cases;
    EXPECT_EQ(wizard->surface.references, 1);
    EXPECT_EQ(element.references, 1);
  }
}

void Resize(const FakeWizard& wizard, int box, int width) {
  const XlRect rect = PlaceOf(wizard.Box(box), wizard.dialog);
  MoveWindow(wizard.Box(box), rect.left, rect.top, width, rect.bottom - rect.top, FALSE);
}

int RightEndOf(const FakeWizard& wizard, int box) {
  return PlaceOf(wizard.ButtonOf(box), wizard.dialog).right - FakeWizard::kLeft;
}

// Counts bad accesses of this program: inside a hook Windows may keep quiet about them.
struct Faults {
  static inline int count = 0;
  static LONG CALLBACK Count(EXCEPTION_POINTERS* fault) {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        static_cast<LPCWSTR>(fault->ExceptionRecord->ExceptionAddress), &module);
    if (module == GetModuleHandleW(nullptr)) ++count;
    return EXCEPTION_CONTINUE_SEARCH;
  }
};

TEST_F(Wizard, PlacesControlsOnTheirBoxes) {
  FakeWizard wizard;
  const auto place = [&wizard](HWND window) { return PlaceOf(window, wizard.dialog); };
  EXPECT_EQ(place(wizard.ButtonOf(0)),
            PlaceWizardButton(place(wizard.Box(0)), XlWizardKind::kList, {}));
  EXPECT_EQ(place(wizard.ButtonOf(1)),
            PlaceWizardButton(place(wizard.Box(1)), XlWizardKind::kButton, {}));
  // Other arguments.
  SCROLLINFO position{sizeof position, SIF_POS, 0, 0, 0, 1, 0};
  SetScrollInfo(wizard.scroll_bar, SB_CTL, &position, FALSE);
  EXPECT_EQ(ControlsOf(wizard), "b-ab-");
  const HWND button = wizard.ButtonOf(0);
  SetScrollInfo(wizard.scroll_bar, SB_CTL, &position, FALSE);
  EXPECT_EQ(wizard.ButtonOf(0), button);  // no other position, nothing to do
  // Numbers that mean something else to other windows.
  void* const counter = AddVectoredExceptionHandler(1, Faults::Count);
  for (const UINT message : {SBM_SETSCROLLINFO, WM_DRAWITEM}) {
    SendMessageA(wizard.Box(0), message, 0, 0);
  }
  RemoveVectoredExceptionHandler(counter);
  EXPECT_EQ(Faults::count, 0);
}

TEST_F(Wizard, WaitsForTheLayoutOfANewDialog) {
  if (!Creations::AreSeen()) GTEST_SKIP() << "hooks aren't told here what is created";
  const FakeWizard wizard;
  for (int box = 0; box < 4; ++box) Resize(wizard, box, 200);
  EXPECT_EQ(RightEndOf(wizard, 0), FakeWizard::kWidth + 3);
  Resize(wizard, 4, 200);
  EXPECT_EQ(RightEndOf(wizard, 0), 200 + 3);
  for (int box = 0; box < 5; ++box) Resize(wizard, box, 100);
  EXPECT_EQ(RightEndOf(wizard, 4), 200 + 3);
  DestroyWindow(wizard.dialog);
  // Not expected, and so without a layout to wait for.
  const FakeWizard numbered(FakeWizard::Shape{.is_by_number = true}, L"f");
  EXPECT_EQ(ControlsOf(numbered), "ab-ab");
  Resize(numbered, 4, 200);
  EXPECT_EQ(RightEndOf(numbered, 4), FakeWizard::kWidth + 3);
}

TEST_F(Wizard, LeavesNothingBehind) {
  HWND dialog = nullptr;
  for (const char* expected : {"ab-ab", "ab-ab"}) {
    const FakeWizard wizard;
    EXPECT_EQ(ControlsOf(wizard), expected);
    dialog = wizard.dialog;
  }
  EXPECT_FALSE(IsWindow(dialog));
  const FakeWizard wizard;
  hook->Uninstall();  // as xlAutoClose does, whatever is open
  EXPECT_EQ(ControlsOf(wizard), "-----");
  EXPECT_EQ(wizard.List(), nullptr);
}

TEST_F(Wizard, DrawsItsControls) {
  const FakeWizard wizard;
  const auto all_looks = [&wizard] {
    std::vector<std::vector<COLORREF>> looks;
    for (const int box : {0, 1}) {
      for (const bool is_pressed : {false, true}) looks.push_back(Draw(wizard, box, is_pressed));
    }
    for (std::size_t i = 0; i < looks.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) EXPECT_NE(looks[i], looks[j]) << i << ' ' << j;
    }
    return looks;
  };
  if (Draw(wizard, 0, false).front() == CLR_INVALID) GTEST_SKIP() << "nothing can be drawn here";
  const auto themed = all_looks();
  SendMessageA(wizard.dialog, WM_THEMECHANGED, 0, 0);
  const auto classic = all_looks();  // until the theme is tried anew
  for (std::size_t i = 0; i < classic.size(); ++i) EXPECT_NE(themed[i], classic[i]) << i;
  SCROLLINFO position{sizeof position, SIF_POS, 0, 0, 0, 3, 0};
  SetScrollInfo(wizard.scroll_bar, SB_CTL, &position, FALSE);
  EXPECT_EQ(all_looks(), themed);
  // Not ours.
  EXPECT_EQ(Draw(wizard, 2, false), std::vector<COLORREF>(17 * 17, 0));
}

TEST_F(Wizard, RunsAButton) {
  const FakeWizard wizard;
  const HWND box = wizard.Box(1);
  std::vector<std::u16string> texts;
  bool changes = true;
  function->button->action = [&](std::u16string& text, HWND parent) {
    EXPECT_EQ(parent, wizard.excel);
    EXPECT_FALSE(IsWindowEnabled(wizard.dialog));
    texts.push_back(text);
    text = u"\u03A9";
    return changes;
  };
  POINT mouse{};
  SetCursorPos(7, 9);
  SetTextOf(box, u"old");
  SendMessageA(wizard.ButtonOf(1), BM_CLICK, 0, 0);
  ASSERT_EQ(texts, std::vector<std::u16string>{u"old"});
  EXPECT_EQ(TextOf(box), u"\u03A9");
  EXPECT_TRUE(IsWindowEnabled(wizard.dialog));
  EXPECT_EQ(GetFocus(), box);
  GetCursorPos(&mouse);
  // The layout may have changed meanwhile, so that the next size counts.
  Resize(wizard, 4, 100);
  EXPECT_EQ(RightEndOf(wizard, 4), 100 + 3);
  EXPECT_TRUE(mouse.x == 7 && mouse.y == 9) << mouse.x << ' ' << mouse.y;

  // By key, which counts in a box with a button alone.
  changes = false;
  SetTextOf(box, std::u16string(300, u'x'));
  PressKey(VK_RETURN, VK_MENU);
  EXPECT_EQ(texts.back(), std::u16string(256, u'x'));
  EXPECT_EQ(TextOf(box), std::u16string(300, u'x'));
  EXPECT_EQ(texts.size(), 2U);
  PressKey(VK_RETURN);
  SetFocus(wizard.Box(2));
  PressKey(VK_RETURN, VK_MENU);
  EXPECT_EQ(texts.size(), 2U);

  // The dialog goes while the button has its own.
  SetFocus(box);
  function->button->action = [&](std::u16string& text, HWND) {
    DestroyWindow(wizard.dialog);
    text = u"gone";
    return true;
  };
  PressKey(VK_RETURN, VK_MENU);
  EXPECT_FALSE(IsWindow(wizard.dialog));
}

// The list drops down in the first box.
class WizardList : public Wizard {
 protected:
  void SetUp() override {
    const HWND any = CreateWindowA("ComboBox", "", WS_CHILD | CBS_DROPDOWN, 0, 0, 80, 160,
                                   wizard.excel, nullptr, nullptr, nullptr);
    if (any == nullptr) GTEST_SKIP() << "no combo box can be made here: error " << GetLastError();
    ASSERT_NE(wizard.List(), nullptr);
    SetFocus(wizard.Box(0));
  }
  [[nodiscard]] bool IsUp() const { return IsWindowVisible(wizard.List()) != 0; }
  [[nodiscard]] bool IsDropped() const {
    return SendMessageA(wizard.List(), CB_GETDROPPEDSTATE, 0, 0) != 0;
  }
  [[nodiscard]] int Selected() const {
    return static_cast<int>(SendMessageA(wizard.List(), CB_GETCURSEL, 0, 0));
  }
  FakeWizard wizard;
};

TEST_F(WizardList, OpensOnALiteralAlone) {
  for (const char16_t* text : {u"A1", u"-1", u"true"}) {
    SetTextOf(wizard.Box(0), text);
    PressKey(VK_DOWN);
    EXPECT_FALSE(IsUp());
  }
  SetTextOf(wizard.Box(0), u"12");
  PressKey(VK_DOWN);
  ASSERT_TRUE(IsUp() && IsDropped());
  EXPECT_FALSE(IsWindowVisible(wizard.ButtonOf(0)));
  EXPECT_TRUE(IsChild(wizard.List(), GetFocus()));
  EXPECT_EQ(TextOf(wizard.List()), u"12");
  EXPECT_EQ(SendMessageA(wizard.List(), CB_GETCOUNT, 0, 0), 3);
  const XlRect box = PlaceOf(wizard.Box(0), wizard.dialog);
  const XlRect list = PlaceOf(wizard.List(), wizard.dialog);
  EXPECT_TRUE(list.left == box.left && list.top == box.top && list.right == box.right);
  // It shows what the covered box holds.
  SetTextOf(wizard.Box(0), u"34");
  EXPECT_EQ(TextOf(wizard.List()), u"34");
  EXPECT_EQ(SendMessageA(wizard.List(), CB_GETEDITSEL, 0, 0), MAKELRESULT(1, 2));
  SetTextOf(wizard.Box(1), u"56");
  EXPECT_EQ(TextOf(wizard.List()), u"34");
}

TEST_F(WizardList, TabTakesTheSelectionAndMovesOn) {
  const struct {
    WORD modifier;
    int expected_box;
  } cases[] = {{0, 1}, {VK_SHIFT, 4}};
  for (const auto& c : cases) {
    SetFocus(wizard.Box(0));
    SetTextOf(wizard.Box(0), u"");
    PressKey(VK_DOWN);
    ASSERT_TRUE(IsDropped());
    std::vector<int> selected;
    for (const int key : {VK_UP, VK_DOWN, VK_DOWN, VK_DOWN, VK_UP}) {
      PressKey(static_cast<WORD>(key));
      selected.push_back(Selected());
    }
    EXPECT_EQ(selected, (std::vector<int>{0, 1, 2, 2, 1}));
    PressKey(VK_TAB, c.modifier);
    EXPECT_FALSE(IsUp());
    EXPECT_EQ(TextOf(wizard.Box(0)), u"\"\u03A9\"");
    EXPECT_EQ(GetFocus(), wizard.Box(c.expected_box));
    EXPECT_EQ(wizard.Children("Button").size(), 4U);
  }
}

TEST_F(WizardList, AClickChooses) {
  SendMessageA(wizard.ButtonOf(3), BM_CLICK, 0, 0);
  ASSERT_TRUE(IsDropped());
  SendMessageA(wizard.List(), CB_SETCURSEL, 2, 0);
  const auto tell = [this](WORD code) {
    SendMessageA(wizard.dialog, WM_COMMAND, MAKEWPARAM(0, code),
                 reinterpret_cast<LPARAM>(wizard.List()));
  };
  tell(CBN_SELENDOK);
  EXPECT_EQ(TextOf(wizard.Box(3)), u"\"s\"");
  EXPECT_TRUE(IsUp());
  tell(CBN_CLOSEUP);
  EXPECT_FALSE(IsUp());
  EXPECT_TRUE(IsWindowVisible(wizard.ButtonOf(3)));
  EXPECT_EQ(TextOf(wizard.Box(0)), u"");
}

}  // namespace
}  // namespace quantiverse
