#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "addin/services/wizard_registry.h"

// How the wizard's hook decides, apart from the windows that it decides about.
namespace quantiverse {

// The dialog shows so many arguments at a time, and scrolls through them.
inline constexpr int kWizardBoxes = 5;

// --- Which dialog it is

inline constexpr std::string_view kWizardDialogClass = "bosa_sdm_XL9";

struct XlWizardChild {
  std::string class_name;
  int left = 0;  // on the screen
  bool is_visible = false;
};

// children: all windows inside a dialog, in their order.
// Gives how many edit boxes are in use, 0 to kWizardBoxes. Nothing if this is some other dialog:
// the wizard has its edit boxes, one below the other, and a scroll bar, and nothing else that is a
// window.
std::optional<int> CountWizardBoxes(std::span<const XlWizardChild> children);

// --- What to do at a message

// The messages that the hook looks at, as Windows counts them.
enum class XlWizardMessage : std::uint32_t {
  kCreate = 0x0001,
  kDestroy = 0x0002,
  kSize = 0x0005,
  kActivate = 0x0006,
  kSetFocus = 0x0007,
  kDrawItem = 0x002B,
  kSetScrollInfo = 0x00E9,
  kCommand = 0x0111,
  kThemeChanged = 0x031A,
};

// The hook sees every message of Excel's main thread: this comes before anything else.
constexpr bool IsWizardMessage(std::uint32_t message) {
  switch (static_cast<XlWizardMessage>(message)) {
    case XlWizardMessage::kCreate:
    case XlWizardMessage::kDestroy:
    case XlWizardMessage::kSize:
    case XlWizardMessage::kActivate:
    case XlWizardMessage::kSetFocus:
    case XlWizardMessage::kDrawItem:
    case XlWizardMessage::kSetScrollInfo:
    case XlWizardMessage::kCommand:
    case XlWizardMessage::kThemeChanged:
      return true;
  }
  return false;
}

// Where the hook stands.
struct XlWizardState {
  bool is_in_dialog = false;
  bool has_controls = false;
  bool is_layout_pending = false;  // the dialog is about to get its final size
  bool is_theme_tried = false;
  int boxes = 0;  // in use
};

// The window that a message went to, and what the message says.
struct XlWizardTarget {
  bool has_dialog_class = false;  // asked for outside of the dialog only
  bool is_dialog = false;
  bool is_scroll_bar = false;
  int box = -1;  // index of the edit box that it is
  bool is_activated = false;
  bool is_button_drawn = false;  // the item to be drawn is a control of the hook
  bool is_scrolled = false;      // the position is another one than before
};

enum class XlWizardStep {
  kNone,
  kExpectDialog,    // one has been created that may be the wizard
  kAttach,          // look at its windows
  kLeaveDialog,     // it goes
  kBuildAfterSize,  // anew, and the layout isn't pending any more
  kBuild,           // anew
  kNoteFocus,
  kDraw,
  kCommand,
  kCloseTheme,
};

XlWizardStep WizardStep(XlWizardMessage message, const XlWizardState& state,
                        const XlWizardTarget& target);

// --- Where a control lies

struct XlRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  friend bool operator==(const XlRect&, const XlRect&) = default;
};

// What sizes depend on.
struct XlWizardLook {
  int dpi = 96;           // of the screen
  int windows_major = 6;  // version
  bool is_themed = true;
};

// The place of a button or an arrow in the right end of an edit box, in the coordinates of `box`:
// chosen so that it covers the frame which the theme draws around the box.
XlRect PlaceWizardButton(const XlRect& box, XlWizardKind kind, const XlWizardLook& look);

// --- Keys

// Whether a key triggers an extension while the field holds `text`. An arrow key, above all, has
// to stay Excel's while a formula is being written.
// mode: 0 never, 1 in an empty field, 2 in one that is empty or holds a literal value, 3 always.
bool WizardModeAllows(std::uint32_t mode, std::u16string_view text);

// selected: index in a list of `count` items, -1 for none. Gives where the selection goes.
int MoveWizardSelection(int selected, int step, int count);

// The edit box that Tab leads to, round and round. No boxes lead nowhere.
int NextWizardBox(int box, int boxes, bool backwards);

}  // namespace quantiverse
