#pragma once

#include "addin/windows/windows.h"

namespace quantiverse {

// The file that this code is part of: the add-in's library, or a test program.
HMODULE ModuleHandle();

}  // namespace quantiverse
