#pragma once

#include "addin/services/com_system.h"
#include "addin/windows/com_pointer.h"

namespace quantiverse {

// Null for null.
XlDispatchPtr MakeDispatch(ComPointer<IDispatch> object);

}  // namespace quantiverse
