#pragma once

#include <atomic>

#include "addin/app_state.h"
#include "addin/com_state.h"
#include "addin/host.h"
#include "addin/registration_state.h"
#include "addin/services/events.h"
#include "addin/spin_lock.h"
#include "addin/string_resources.h"
#include "addin/xlcall.h"

// All that the add-in keeps from call to call.
namespace quantiverse {

struct XlReturnBlock;

// What is known of the Excel around us. Written at start-up, but for the entry.
struct ExcelState {
  CXlHost* host = nullptr;  // null for PlatformHost()
  int version = 0;          // 0 until known
  bool is_excel12 = false;  // 12 or later: values travel as XLOPER12
  // Sought at every call until it is found, on any thread.
  std::atomic<MdCallBack12Entry*> md_callback12 = nullptr;
};

// What row and column are called in the R1C1 notation of Excel's locale.
struct LocaleLetters {
  char16_t wide_row = u'R';
  char16_t wide_column = u'C';
  char row = 'R';
  char column = 'C';
};

// The return block of every thread that has one.
struct ReturnBlocks {
  ThreadSlot slot;
  SpinLock lock;  // of the list
  XlReturnBlock* first = nullptr;
};

struct AddinState {
  ExcelState excel;
  LocaleLetters letters;
  ReturnBlocks return_blocks;
  StringResources resources;
  RegistrationState registration;
  CXlStaticObservers static_observers;
  AppState app;
  ComState com;
};

AddinState& State();

// The form in which values are created.
inline bool IsExcel12() { return State().excel.is_excel12; }

inline CXlHost& Host() {
  CXlHost* const host = State().excel.host;
  return host != nullptr ? *host : PlatformHost();
}

}  // namespace quantiverse
