#include "addin/menu.h"

#include <algorithm>
#include <utility>

#include "addin/excel_call.h"
#include "addin/resource_text.h"

namespace quantiverse {
namespace {

constexpr double kWorksheetBar = 10.0;

// The columns of a menu's table; the others aren't for newer Excels.
constexpr int kCaption = 0;
constexpr int kMacro = 1;
constexpr int kStatusText = 3;
constexpr int kColumns = 5;

// A reference to nothing stays as it stands.
std::string Expanded(const std::string& text) {
  std::string expanded;
  ExpandResourceText(text, expanded);
  return expanded;
}

template <typename... Arguments>
bool IsDone(int function, const Arguments&... arguments) {
  return XlCommand(function, kWorksheetBar, arguments...) == xlretSuccess;
}

}  // namespace

void CXlMenu::Init(std::string name, std::string status_text) {
  *this = {};
  expanded_name_ = Expanded(name);
  name_ = std::move(name);
  status_text_ = std::move(status_text);
}

std::string CXlMenu::ExcelsName() const {
  std::string name = expanded_name_;
  std::erase(name, '&');
  return name;
}

bool CXlMenu::AddItem(std::string caption, std::string macro, std::string status_text) {
  if (!is_created_) {
    items_.push_back({std::move(caption), std::move(macro), std::move(status_text)});
    return true;
  }
  CXlOper table;
  table.Resize(1, 2, "");
  table.Element(0, kCaption) = Expanded(caption);
  table.Element(0, kMacro) = macro;
  if (parent_ == nullptr) return IsDone(xlfAddCommand, ExcelsName(), table);
  return IsDone(xlfAddCommand, parent_->ExcelsName(), table, ExcelsName(), "");
}

bool CXlMenu::Create(const CXlMenu* parent, const std::string& position, int position_number) {
  if (parent != nullptr && parent->parent_ != nullptr) return false;

  CXlOper table;
  table.Resize(static_cast<int>(items_.size()) + 1, kColumns, "");
  table.Element(0, kCaption) = expanded_name_;
  table.Element(0, kStatusText) = Expanded(status_text_);
  int row = 1;
  for (const Item& item : items_) {
    table.Element(row, kCaption) = Expanded(item.caption);
    table.Element(row, kMacro) = item.macro;
    table.Element(row, kStatusText) = Expanded(item.status_text);
    ++row;
  }

  CXlOper place = XlMissing{};
  if (!position.empty()) {
    place = Expanded(position);
  } else if (position_number > 0) {
    place = static_cast<double>(position_number);
  }

  if (parent != nullptr) {
    is_created_ = IsDone(xlfAddMenu, table, parent->ExcelsName(), place);
  } else {
    const bool has_place = place.Type() != xltypeMissing;
    is_created_ = (has_place && IsDone(xlfAddMenu, table, place)) || IsDone(xlfAddMenu, table);
  }
  parent_ = parent;
  return is_created_;
}

bool CXlMenu::Delete() const {
  if (parent_ == nullptr) return IsDone(xlfDeleteMenu, ExcelsName());
  return IsDone(xlfDeleteMenu, parent_->ExcelsName(), ExcelsName());
}

}  // namespace quantiverse
