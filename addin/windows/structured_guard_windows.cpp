#include <malloc.h>

#include <cstdint>
#include <exception>

#include "addin/exceptions.h"
#include "addin/structured_guard.h"
#include "addin/windows/guard_frame.h"
#include "addin/windows/windows.h"

namespace quantiverse {
namespace {

struct Call {
  void (*body)(void*);
  void* argument;
  std::exception_ptr thrown;  // by the body
};

// The frame below this one isn't the compiler's, so nothing may be thrown through it.
void RunAndKeepWhatIsThrown(void* data) {
  Call& call = *static_cast<Call*>(data);
  try {
    call.body(call.argument);
  } catch (...) {
    call.thrown = std::current_exception();
  }
}

}  // namespace

void RunGuarded(void (*body)(void* argument), void* argument) {
  Call call{body, argument, nullptr};
  std::uint32_t code = 0;
  if (QuantiverseGuardFrame(RunAndKeepWhatIsThrown, &call, &code) != 0) {
    // The page that tells of the stack's end tells once only.
    if (code == EXCEPTION_STACK_OVERFLOW) _resetstkoflw();
    throw CXlStructuredException(code);
  }
  if (call.thrown != nullptr) std::rethrow_exception(call.thrown);
}

}  // namespace quantiverse
