#include "addin/services/wizard_rules.h"

#include <algorithm>

namespace quantiverse {
namespace {

constexpr std::string_view kBoxClass = "EDTBX";
constexpr std::string_view kScrollBarClass = "ScrollBar";

// Windows Vista, where the frames of fields have become thinner.
constexpr int kNewFrames = 6;
constexpr int kDesignDpi = 96;

// To the nearest, halves up, as Windows scales.
int Scale(int pixels, int dpi) { return (pixels * dpi + kDesignDpi / 2) / kDesignDpi; }

int DesignHeight(XlWizardKind kind, bool is_new) {
  if (kind == XlWizardKind::kButton) return 16;
  return is_new ? 20 : 18;
}

int MoveUp(XlWizardKind kind, bool is_new) {
  if (kind == XlWizardKind::kButton) return 2;
  return is_new ? 4 : 3;
}

std::u16string_view Trim(std::u16string_view text) {
  constexpr std::u16string_view kBlanks = u" \t\r\n";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::u16string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

bool IsLiteral(std::u16string_view text) {
  const char16_t first = text.front();
  return first == u'"' || (first >= u'0' && first <= u'9') || text == u"FALSE" || text == u"TRUE";
}

}  // namespace

std::optional<int> CountWizardBoxes(std::span<const XlWizardChild> children) {
  if (children.size() != kWizardBoxes + 1) return std::nullopt;
  const auto boxes = children.first(kWizardBoxes);
  int used = 0;
  for (int i = 0; i < kWizardBoxes; ++i) {
    const XlWizardChild& box = boxes[static_cast<std::size_t>(i)];
    if (box.class_name != kBoxClass || box.left != boxes.front().left) return std::nullopt;
    if (box.is_visible) used = i + 1;
  }
  if (children.back().class_name != kScrollBarClass) return std::nullopt;
  return used;
}

XlWizardStep WizardStep(XlWizardMessage message, const XlWizardState& state,
                        const XlWizardTarget& target) {
  using enum XlWizardStep;
  const auto when = [](bool condition, XlWizardStep step) { return condition ? step : kNone; };
  const bool in_dialog = state.is_in_dialog;
  switch (message) {
    case XlWizardMessage::kCreate:
      return when(!in_dialog && target.has_dialog_class, kExpectDialog);
    case XlWizardMessage::kActivate:
      return when(!in_dialog && target.is_activated && target.has_dialog_class, kAttach);
    case XlWizardMessage::kDestroy:
      return when(in_dialog && target.is_dialog, kLeaveDialog);
    case XlWizardMessage::kSize:
      return when(in_dialog && state.has_controls && state.is_layout_pending && target.box >= 0 &&
                      target.box == state.boxes - 1,
                  kBuildAfterSize);
    case XlWizardMessage::kSetFocus:
      return when(in_dialog && target.box >= 0, kNoteFocus);
    case XlWizardMessage::kDrawItem:
      return when(in_dialog && state.has_controls && target.is_dialog && target.is_button_drawn,
                  kDraw);
    case XlWizardMessage::kSetScrollInfo:
      return when(in_dialog && target.is_scroll_bar && target.is_scrolled, kBuild);
    case XlWizardMessage::kCommand:
      return when(in_dialog && target.is_dialog, XlWizardStep::kCommand);
    case XlWizardMessage::kThemeChanged:
      return when(state.is_theme_tried, kCloseTheme);
  }
  return kNone;
}

XlRect PlaceWizardButton(const XlRect& box, XlWizardKind kind, const XlWizardLook& look) {
  constexpr int kDesignWidth = 17;
  const bool is_new = look.windows_major >= kNewFrames;
  const int width = Scale(kDesignWidth, look.dpi);
  int height = Scale(DesignHeight(kind, is_new), look.dpi);
  int left = box.right - width + (is_new ? 3 : 2);
  int top = box.top - MoveUp(kind, is_new);
  // What rounding has done at the densities that users choose.
  if (look.dpi > kDesignDpi) --height;
  if (look.dpi == 120 || look.dpi == 144) ++top;
  if (!look.is_themed) {
    --left;
    ++top;
    height -= 2;
  }
  return {left, top, left + width, top + height};
}

bool WizardModeAllows(std::uint32_t mode, std::u16string_view text) {
  const std::u16string_view value = Trim(text);
  switch (mode) {
    case 1:
      return value.empty();
    case 2:
      return value.empty() || IsLiteral(value);
    case 3:
      return true;
    default:
      return false;
  }
}

int MoveWizardSelection(int selected, int step, int count) {
  if (count <= 0) return -1;
  return std::clamp(selected + step, 0, count - 1);
}

int NextWizardBox(int box, int boxes, bool backwards) {
  if (boxes <= 0) return box;
  return (box + (backwards ? boxes - 1 : 1)) % boxes;
}

}  // namespace quantiverse
