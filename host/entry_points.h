#pragma once

#include "host/xlcall.h"

// What the host exports to add-ins, under the published names.
extern "C" {
XLHOST_EXPORT int Excel4(int function, quantiverse::host::Record4* result, int count, ...);
XLHOST_EXPORT int XLHOST_PASCAL Excel4v(int function, quantiverse::host::Record4* result, int count,
                                        quantiverse::host::Record4** arguments);
}

namespace quantiverse::host {

// The callback of the newer generation. `xlhost` exports it as MdCallBack12, `xlhost-plain`
// doesn't.
extern "C" int XLHOST_PASCAL XlHostCallBack12(int function, int count, Record12** arguments,
                                              Record12* result);

}  // namespace quantiverse::host
