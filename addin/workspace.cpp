#include "addin/workspace.h"

#include "addin/addin_state.h"
#include "addin/excel_call.h"

namespace quantiverse {
namespace {

constexpr double kLocaleSettings = 37.0;

void ReadLetter(int index, char16_t& wide, char& narrow) {
  CXlOper item;
  if (!GetWorkspaceItem(index, item) || !item.IsString()) return;
  const std::u16string text = item.ToWideText();
  if (text.empty()) return;
  wide = text.front();
  narrow = NarrowText({&text.front(), 1}).front();
}

}  // namespace

bool GetWorkspaceItem(int index, CXlOper& item) {
  CXlOper settings;
  if (index < 0 || Excel(settings, xlfGetWorkspace, kLocaleSettings) != xlretSuccess) return false;
  int rows = 0;
  int columns = 0;
  settings.GetDimensions(rows, columns);
  if (!settings.IsScalarOrVector() || (rows == 1 ? columns : rows) <= index) return false;
  item = settings.ItemOfVector(index);
  return true;
}

void ReadLocaleLetters() {
  LocaleLetters& letters = State().letters;
  letters = {};
  ReadLetter(kWorkspaceRow, letters.wide_row, letters.row);
  ReadLetter(kWorkspaceColumn, letters.wide_column, letters.column);
}

}  // namespace quantiverse
