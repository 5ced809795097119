#pragma once

#include <string>

// What the observers of an event are told. A `cancel` that an observer sets keeps Excel, or the
// add-in, from what it was about to do.
namespace quantiverse {

struct CXllOpenEventArgs {
  bool cancel = false;
};

struct CXlEventArgs {};

struct CXlWorkbookEventArgs {
  std::u16string workbook;
};

struct CXlWorksheetEventArgs {
  std::u16string sheet;
};

struct CXlRangeEventArgs {
  std::u16string sheet;
  std::u16string range;
};

struct CXlCancellableRangeEventArgs {
  std::u16string sheet;
  std::u16string range;
  bool cancel = false;
};

struct CXlBeforeCloseEventArgs {
  std::u16string workbook;
  bool cancel = false;
};

struct CXlBeforeSaveEventArgs {
  std::u16string workbook;
  bool save_as = false;
  bool cancel = false;
};

struct CXlWorkbookNewSheetEventArgs {
  std::u16string workbook;
  std::u16string sheet;
};

struct CXlAfterCalculateEventArgs {};

struct CXlAfterSaveEventArgs {
  std::u16string workbook;
  bool success = false;
};

}  // namespace quantiverse
