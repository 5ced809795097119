#pragma once

#include <cstdint>
#include <span>

#include "addin/services/com_system.h"

// What a sink for Excel's AppEvents does when it is invoked.
namespace quantiverse {

// Types of variants, as the system counts them.
inline constexpr std::uint16_t kVariantObject = 9;
inline constexpr std::uint16_t kVariantBool = 11;
inline constexpr std::uint16_t kVariantBoolByReference = 16395;

// Results of Invoke.
inline constexpr XlComResult kUnknownMember = 0x80020003;
inline constexpr XlComResult kNoParameters = 0x80020004;
inline constexpr XlComResult kWrongType = 0x80020005;
inline constexpr XlComResult kWrongCount = 0x8002000E;

// A variant as the sink gets it: its type, and the one member that belongs to that.
struct XlSinkArgument {
  std::uint16_t type = 0;
  XlDispatchPtr object;
  bool flag = false;
  std::int16_t* cancel = nullptr;
};

// Passes an event on to the receiver. A last argument that the event wants back tells Excel
// whether it is cancelled: -1, else 0. What the receiver throws doesn't get into Excel; the event
// isn't cancelled then.
// arguments: the last one first; null for none at all, which no event has.
XlComResult InvokeSink(IXlEventReceiver& receiver, std::int32_t dispatch_id,
                       const std::span<const XlSinkArgument>* arguments);

}  // namespace quantiverse
