#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>

#include "addin/xlcall.h"
#include "addin/xloper.h"

// Every request that the add-in makes of Excel. Requests answer Excel's codes, xlretSuccess for
// done; nothing is tried twice, and callers decide what a failure means. May run on any thread
// that Excel lets call back.
namespace quantiverse {

// The form in which a request travels.
enum class XlMode {
  k4 = 0,
  k12 = 1,
  kRunning = 2,  // that of the running Excel
};

// The answer to a request that can't be made in the form asked for. Excel doesn't see it.
inline constexpr int kCannotCall = 256;
inline constexpr std::size_t kMaxArguments4 = 30;
inline constexpr int kMaxArguments12 = 255;

// Makes a request. Arguments in the other form alone are converted for the call, and stay as they
// are.
// result: takes Excel's answer in place of its old value; untouched unless the call succeeds. May
//         be one of the arguments.
// Answers kCannotCall for k12 in an Excel before 12, and in an XLOPER call for more than 30
// arguments or one that doesn't fit; xlretInvXloper for an argument never assigned.
int ExcelV(CXlOper& result, XlMode mode, int function, std::span<const CXlOper* const> arguments);

inline int ExcelV(CXlOper& result, XlMode mode, int function,
                  std::initializer_list<const CXlOper*> arguments) {
  return ExcelV(result, mode, function, std::span(arguments.begin(), arguments.size()));
}

// The same for values in a row.
int RegisterExcel(CXlOper& result, XlMode mode, int function, std::span<const CXlOper> arguments);

// A request in the form of the running Excel; plain arguments become values for it:
// Excel(release, xlfInfo, "Release").
template <typename... Arguments>
int Excel(CXlOper& result, int function, const Arguments&... arguments) {
  return ExcelV(result, XlMode::kRunning, function, {&static_cast<const CXlOper&>(arguments)...});
}

// A request whose answer nobody wants.
template <typename... Arguments>
int XlCommand(int function, const Arguments&... arguments) {
  CXlOper dropped;
  return Excel(dropped, function, arguments...);
}

// Shows a text in Excel's own alert.
// type: 1 has OK and Cancel, 3 an error sign.
// Gives the answer; false if the call fails.
bool XlAlert(const CXlOper& text, int type);

// The calls below the gateway. xlretFailed where the main program lacks the entry.
int Excel4v(int function, XLOPER* result, int count, XLOPER** arguments);
int Excel12v(int function, XLOPER12* result, int count, XLOPER12** arguments);
// Pointers to XLOPER12 follow. xlretInvCount for more than 255.
int Excel12(int function, XLOPER12* result, int count, ...);

// Gives the result of a call back to Excel.
void FreeExcelResult(XLOPER& result);
void FreeExcelResult(XLOPER12& result);

// The entry of the newer generation as told by a host that doesn't export it. One that is known
// already, or exported after all, stays.
void SetMdCallBack12(MdCallBack12Entry* entry);

// Asks Excel for its version, unless that is known, in the way that every Excel understands.
void FindExcelVersion();

}  // namespace quantiverse
