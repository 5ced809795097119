#include "host/invoke.h"

#include <span>

#include "host/xlcall.h"

// The types of a function's arguments come at run time, from its type text. The compiler makes one
// call for every mixture of doubles and words, and the slots lead to the right one: no assembler,
// and right under every calling convention.

namespace quantiverse::host {
namespace {

template <class... Arguments>
void* invoke_rest(void* address, std::span<const Slot> rest, Arguments... arguments) {
  if (rest.empty()) {
    using Function = void*(XLHOST_PASCAL*)(Arguments...);
    return reinterpret_cast<Function>(address)(arguments...);
  }
  if constexpr (sizeof...(Arguments) < kMostSlots) {
    const Slot& next = rest.front();
    rest = rest.subspan(1);
    const auto* const number = std::get_if<double>(&next);
    return number != nullptr
               ? invoke_rest(address, rest, arguments..., *number)
               : invoke_rest(address, rest, arguments..., *std::get_if<std::intptr_t>(&next));
  }
  return nullptr;
}

}  // namespace

void* invoke(void* address, std::span<const Slot> slots) { return invoke_rest(address, slots); }

}  // namespace quantiverse::host
