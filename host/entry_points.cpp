#include "host/entry_points.h"

#include <cstdarg>

#include "host/gateway.h"

using quantiverse::host::call_host;
using quantiverse::host::EntryPoint;
using quantiverse::host::Host;
using quantiverse::host::kMostArguments4;
using quantiverse::host::Record12;
using quantiverse::host::Record4;
using quantiverse::host::serving_host;

int Excel4(int function, Record4* result, int count, ...) {
  Host* const host = serving_host();
  if (host == nullptr) return quantiverse::host::kFailed;
  Record4* arguments[kMostArguments4] = {};
  va_list list;
  va_start(list, count);
  for (int i = 0; i < count && i < kMostArguments4; ++i) arguments[i] = va_arg(list, Record4*);
  va_end(list);
  return call_host(*host, EntryPoint::kExcel4, function, result, count, arguments);
}

int XLHOST_PASCAL Excel4v(int function, Record4* result, int count, Record4** arguments) {
  Host* const host = serving_host();
  if (host == nullptr) return quantiverse::host::kFailed;
  return call_host(*host, EntryPoint::kExcel4v, function, result, count, arguments);
}

extern "C" int XLHOST_PASCAL XlHostCallBack12(int function, int count, Record12** arguments,
                                              Record12* result) {
  Host* const host = serving_host();
  if (host == nullptr) return quantiverse::host::kFailed;
  return call_host(*host, EntryPoint::kMdCallBack12, function, result, count, arguments);
}
