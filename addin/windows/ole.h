#pragma once

// Component objects. In this order: ours keeps windows.h from bringing in too much.
// clang-format off
#include "addin/windows/windows.h"
#include <ole2.h>
#include <ocidl.h>
#include <oleacc.h>
// clang-format on
