// Asked by the system what to do with an exception that has come as far as our frame.
#include <cstdint>

#include "addin/windows/windows.h"

namespace quantiverse {
namespace {

constexpr DWORD kUnwinding = 0x2 | 0x4;
constexpr DWORD kCxxMask = 0x00FFFFFF;
constexpr DWORD kCxx = 0x00474343;  // "CCG": thrown by this compiler's C++
constexpr DWORD kOtherCxx = 0xE06D7363;
constexpr DWORD kThreadName = 0x406D1388;
constexpr DWORD kDebugText = 0x40010006;
constexpr DWORD kDebugWideText = 0x4001000A;

// A program's own exceptions, and notes to a debugger, are for others.
bool IsFault(DWORD code) {
  return (code & kCxxMask) != kCxx && code != kOtherCxx && code != kThreadName &&
         code != kDebugText && code != kDebugWideText;
}

bool IsForUs(const EXCEPTION_RECORD& record) {
  return (record.ExceptionFlags & kUnwinding) == 0 && IsFault(record.ExceptionCode);
}

}  // namespace

#if defined(_WIN64)

extern "C" {
void QuantiverseGuardLanding();

EXCEPTION_DISPOSITION QuantiverseGuardFilter(EXCEPTION_RECORD* record, void* frame,
                                             CONTEXT* context, DISPATCHER_CONTEXT* dispatcher) {
  if (!IsForUs(*record)) return ExceptionContinueSearch;
  const auto base = reinterpret_cast<char*>(dispatcher->EstablisherFrame);
  **reinterpret_cast<std::uint32_t**>(base - sizeof(void*)) = record->ExceptionCode;
  RtlUnwindEx(frame, reinterpret_cast<void*>(QuantiverseGuardLanding), record, nullptr, context,
              dispatcher->HistoryTable);
  return ExceptionContinueSearch;  // not reached
}
}

#else

extern "C" {
struct GuardRecord {
  void* previous;
  void* handler;
  void* frame_base;
  std::uint32_t* code;
};
[[noreturn]] void QuantiverseGuardResume(GuardRecord* record);

EXCEPTION_DISPOSITION QuantiverseGuardFilter(EXCEPTION_RECORD* exception, GuardRecord* record,
                                             CONTEXT*, void*) {
  if (!IsForUs(*exception)) return ExceptionContinueSearch;
  *record->code = exception->ExceptionCode;
  QuantiverseGuardResume(record);
}
}

#endif

}  // namespace quantiverse
