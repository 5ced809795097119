#pragma once

#include <optional>
#include <string>

#include "addin/windows/windows.h"

namespace quantiverse {

// The function that a Function Arguments dialog shows, in the system's code page. The dialog has it
// on its surface alone, so this asks as a screen reader does. Nothing if the dialog doesn't tell.
std::optional<std::string> FunctionNameIn(HWND dialog);

}  // namespace quantiverse
