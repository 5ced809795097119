#include <cstdarg>
#include <cstddef>
#include <utility>

#include "host/windows.h"
#include "host/xlcall.h"

// Excel brings a library XLCall32.dll with it, from which add-ins import the entries of the older
// generation by their numbers. This one lies beside the host and leads to the entries that the
// running program exports.
using quantiverse::host::kFailed;
using quantiverse::host::kMostArguments4;
using quantiverse::host::Record4;

namespace {

using Excel4Entry = int(int function, Record4* result, int count, ...);
using Excel4vEntry = int XLHOST_PASCAL(int function, Record4* result, int count,
                                       Record4** arguments);

template <class Entry>
Entry* find_in_program(const char* name) {
  return reinterpret_cast<Entry*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(nullptr), name)));
}

// How many there are is known at run time only, so all are passed, the rest of them null.
template <std::size_t... kIndexes>
int pass_on(Excel4Entry* entry, int function, Record4* result, int count, Record4* const* arguments,
            std::index_sequence<kIndexes...>) {
  return entry(function, result, count, arguments[kIndexes]...);
}

}  // namespace

extern "C" {

int Excel4(int function, Record4* result, int count, ...) {
  auto* const entry = find_in_program<Excel4Entry>("Excel4");
  if (entry == nullptr) return kFailed;
  Record4* arguments[kMostArguments4] = {};
  va_list list;
  va_start(list, count);
  for (int i = 0; i < count && i < kMostArguments4; ++i) arguments[i] = va_arg(list, Record4*);
  va_end(list);
  return pass_on(entry, function, result, count, arguments,
                 std::make_index_sequence<kMostArguments4>());
}

int XLHOST_PASCAL Excel4v(int function, Record4* result, int count, Record4** arguments) {
  auto* const entry = find_in_program<Excel4vEntry>("Excel4v");
  return entry != nullptr ? entry(function, result, count, arguments) : kFailed;
}
}
