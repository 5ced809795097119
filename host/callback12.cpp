#include "host/entry_points.h"

// A file of its own, since a program that has it exports it for good.
using quantiverse::host::Record12;

extern "C" XLHOST_EXPORT int XLHOST_PASCAL MdCallBack12(int function, int count,
                                                        Record12** arguments, Record12* result) {
  return quantiverse::host::XlHostCallBack12(function, count, arguments, result);
}
