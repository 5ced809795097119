#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "addin/services/wizard_detector.h"
#include "addin/services/wizard_rules.h"

namespace quantiverse {

static std::ostream& operator<<(std::ostream& out, const XlRect& rect) {
  return out << rect.left << ' ' << rect.top << ' ' << rect.right << ' ' << rect.bottom;
}

namespace {

struct FakeWindow {
  std::uintptr_t parent = 0;
  std::u16string class_name;
  std::u16string title;
};

class FakeWindows final : public IXlWindowReader {
 public:
  [[nodiscard]] std::uintptr_t Parent(std::uintptr_t window) const override {
    return windows.at(window).parent;
  }
  [[nodiscard]] std::u16string ClassName(std::uintptr_t window, std::size_t limit) const override {
    return windows.at(window).class_name.substr(0, limit);
  }
  [[nodiscard]] std::u16string Title(std::uintptr_t window, std::size_t limit) const override {
    return windows.at(window).title.substr(0, limit);
  }
  std::map<std::uintptr_t, FakeWindow> windows;
};

TEST(WizardDetector, KnowsTheDialog) {
  constexpr std::uintptr_t kExcel = 0x41234;
  FakeWindows windows;
  const CXlFormulaWizardDetector detector(windows);
  const struct {
    FakeWindow window;
    bool expected;
  } cases[] = {
      {{kExcel, u"bosa_sdm_XL9", u"Function Arguments"}, true},
      {{kExcel, u"bosa_sdm_XL", u"Function Arguments of f"}, true},
      {{kExcel, u"bosa_sdm_XL9", u""}, true},
      {{kExcel, u"bosa_sdm_XL9", u"Funktionsargumente"}, true},
      {{kExcel, u"bosa_sdm_XL9", u"Find"}, false},
      {{kExcel, u"bosa_sdm_XL9", u"Find and Replace"}, false},
      {{kExcel, u"bosa_sdm_XL9", u"find"}, true},
      {{kExcel, u"bosa_sdm_X", u"Function Arguments"}, false},
      {{kExcel, u"abosa_sdm_XL9", u"Function Arguments"}, false},
      {{0x1234, u"bosa_sdm_XL9", u"Function Arguments"}, true},  // the same lower word
      {{kExcel + 1, u"bosa_sdm_XL9", u"Function Arguments"}, false},
      {{0, u"bosa_sdm_XL9", u"Function Arguments"}, false},
  };
  for (const auto& c : cases) {
    windows.windows[1] = c.window;
    EXPECT_EQ(detector.IsWizardWindow(1, 0x1234), c.expected)
        << testing::PrintToString(c.window.title) << c.window.parent;
  }
}

TEST(WizardRules, CountsTheBoxesOfTheDialogAndRefusesOthers) {
  // A letter a window: E and e an edit box, visible or not, < one further left, s the scroll bar.
  const std::map<char, XlWizardChild> kinds = {{'E', {"EDTBX", 7, true}},
                                               {'e', {"EDTBX", 7, false}},
                                               {'<', {"EDTBX", 6, true}},
                                               {'S', {"ScrollBar", 90, true}},
                                               {'b', {"Button", 7, true}}};
  const struct {
    std::string children;
    std::optional<int> expected;
  } cases[] = {
      {"EEEEES", 5},  {"EEeeeS", 2},   {"eeEeeS", 3},  {"eeeeeS", 0},
      {"EEEES", {}},  {"EEEEEES", {}}, {"EEEEE", {}},  {"EEEEEE", {}},
      {"EE<EES", {}}, {"SEEEEE", {}},  {"EEEEbS", {}}, {"", {}},
  };
  for (const auto& c : cases) {
    std::vector<XlWizardChild> children;
    for (const char letter : c.children) children.push_back(kinds.at(letter));
    EXPECT_EQ(CountWizardBoxes(children), c.expected) << c.children;
  }
}

TEST(WizardRules, TakesTheStepThatAMessageAsksFor) {
  using enum XlWizardStep;
  using M = XlWizardMessage;
  const XlWizardState outside;
  const XlWizardState bare{.is_in_dialog = true, .boxes = 3};
  XlWizardState ready{.is_in_dialog = true, .has_controls = true, .boxes = 3};
  XlWizardState pending = ready;
  pending.is_layout_pending = true;
  XlWizardState themed = outside;
  themed.is_theme_tried = true;
  const XlWizardTarget other;
  const XlWizardTarget dialog_class{.has_dialog_class = true};
  const XlWizardTarget activated{.has_dialog_class = true, .is_activated = true};
  const XlWizardTarget dialog{.is_dialog = true};
  const XlWizardTarget drawn{.is_dialog = true, .is_button_drawn = true};
  const XlWizardTarget scrolled{.is_scroll_bar = true, .is_scrolled = true};
  const auto box = [](int index) { return XlWizardTarget{.box = index}; };
  const struct {
    M message;
    XlWizardState state;
    XlWizardTarget target;
    XlWizardStep expected;
  } cases[] = {
      {M::kCreate, outside, dialog_class, kExpectDialog},
      {M::kCreate, outside, other, kNone},
      {M::kCreate, bare, dialog_class, kNone},
      {M::kActivate, outside, activated, kAttach},
      {M::kActivate, outside, dialog_class, kNone},
      {M::kActivate, bare, activated, kNone},
      {M::kDestroy, bare, dialog, kLeaveDialog},
      {M::kDestroy, bare, box(1), kNone},
      {M::kDestroy, outside, dialog, kNone},
      {M::kSize, pending, box(2), kBuildAfterSize},
      {M::kSize, pending, box(1), kNone},
      {M::kSize, ready, box(2), kNone},
      {M::kSize, {true, false, true, false, 3}, box(2), kNone},
      {M::kSize, {true, true, true, false, 0}, other, kNone},
      {M::kSetFocus, bare, box(0), kNoteFocus},
      {M::kSetFocus, bare, dialog, kNone},
      {M::kDrawItem, ready, drawn, kDraw},
      {M::kDrawItem, ready, dialog, kNone},
      {M::kDrawItem, bare, drawn, kNone},
      {M::kSetScrollInfo, bare, scrolled, kBuild},
      {M::kSetScrollInfo, bare, {.is_scroll_bar = true}, kNone},
      {M::kSetScrollInfo, bare, {.is_scrolled = true}, kNone},
      {M::kCommand, bare, dialog, kCommand},
      {M::kCommand, bare, other, kNone},
      {M::kCommand, outside, dialog, kNone},
      {M::kThemeChanged, themed, other, kCloseTheme},
      {M::kThemeChanged, bare, other, kNone},
  };
  for (const auto& c : cases) {
    EXPECT_TRUE(IsWizardMessage(static_cast<std::uint32_t>(c.message)));
    EXPECT_EQ(WizardStep(c.message, c.state, c.target), c.expected)
        << "row " << &c - cases << ", message " << static_cast<int>(c.message);
  }
  for (const unsigned message : {0U, 0x000FU, 0x0200U}) EXPECT_FALSE(IsWizardMessage(message));
}

TEST(WizardRules, PlacesButtonsOnTheRightEndOfABox) {
  constexpr auto kList = XlWizardKind::kList;
  constexpr auto kButton = XlWizardKind::kButton;
  constexpr XlRect kBox{10, 100, 110, 120};
  const struct {
    XlWizardKind kind;
    XlWizardLook look;
    XlRect expected;
  } cases[] = {
      {kButton, {96, 6, true}, {96, 98, 113, 114}},
      {kList, {96, 6, true}, {96, 96, 113, 116}},
      {kButton, {96, 5, true}, {95, 98, 112, 114}},
      {kList, {96, 5, true}, {95, 97, 112, 115}},
      {kList, {96, 10, false}, {95, 97, 112, 115}},
      {kButton, {96, 5, false}, {94, 99, 111, 113}},
      {kList, {120, 6, true}, {92, 97, 113, 121}},
      {kButton, {144, 6, true}, {87, 99, 113, 122}},
      {kList, {192, 6, true}, {79, 96, 113, 135}},
      {kButton, {120, 5, false}, {90, 100, 111, 117}},
      {kButton, {168, 6, true}, {83, 98, 113, 125}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(PlaceWizardButton(kBox, c.kind, c.look), c.expected) << "row " << &c - cases;
  }
}

TEST(WizardRules, LeavesTheKeyToExcelWhileAFormulaIsWritten) {
  const struct {
    const char16_t* text;
    const char* modes;  // that the key works in
  } cases[] = {
      {u"", "123"},       {u" \t\r\n", "123"}, {u"\"a", "23"}, {u" 1+2", "23"},
      {u"FALSE\n", "23"}, {u"TRUE", "23"},     {u"true", "3"}, {u"TRUE()", "3"},
      {u"-1", "3"},       {u"A1", "3"},        {u".5", "3"},   {u"=1", "3"},
  };
  for (const auto& c : cases) {
    for (const char mode : {'0', '1', '2', '3', '4'}) {
      EXPECT_EQ(WizardModeAllows(static_cast<std::uint32_t>(mode - '0'), c.text),
                std::string(c.modes).find(mode) != std::string::npos)
          << testing::PrintToString(std::u16string(c.text)) << " in mode " << mode;
    }
  }
}

TEST(WizardRules, MovesWithinBounds) {
  const struct {
    int selected, step, count, expected;
  } moves[] = {{0, 1, 3, 1},  {2, 1, 3, 2},   {0, -1, 3, 0},
               {-1, 1, 3, 0}, {-1, -1, 3, 0}, {-1, 1, 0, -1}};
  for (const auto& m : moves) {
    EXPECT_EQ(MoveWizardSelection(m.selected, m.step, m.count), m.expected) << "row " << &m - moves;
  }
  const struct {
    int box, boxes;
    bool backwards;
    int expected;
  } tabs[] = {{0, 3, false, 1}, {2, 3, false, 0}, {0, 3, true, 2},
              {1, 3, true, 0},  {0, 1, true, 0},  {0, 0, false, 0}};
  for (const auto& t : tabs) {
    EXPECT_EQ(NextWizardBox(t.box, t.boxes, t.backwards), t.expected) << "row " << &t - tabs;
  }
}

}  // namespace
}  // namespace quantiverse
