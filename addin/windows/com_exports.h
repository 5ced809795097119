#pragma once

#include "addin/xlcall.h"

// What Excel calls by name where its object model is attached to. All give 1, whatever happens.
namespace quantiverse {

extern "C" {
// Called in one Excel after another, to find out in which the add-in is loaded.
int XLCALL_PASCAL xlCheckInstance();
// The macros of an Excel that knows no other way to tell of events.
int XLCALL_PASCAL CXllComImpl_OnSheetActivate();
int XLCALL_PASCAL CXllComImpl_OnSheetDeactivate();
int XLCALL_PASCAL CXllComImpl_OnCalculate();
}

}  // namespace quantiverse
