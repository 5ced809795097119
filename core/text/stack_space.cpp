#include "text/stack_space.h"

#include <algorithm>
#include <exception>

#include "text/own_thread.h"
#include "text/vectors.h"

namespace quantiverse {
namespace {

// Reserved address space; memory is only taken as the stack grows.
constexpr std::size_t kFreshStack = 32UL * 1024 * 1024;
// What a routine may need between two questions after its own stack has become low.
constexpr std::size_t kReserve = 512UL * 1024;
constexpr const char* kNoStack = "Allocation failure in call_on_fresh_stack().";

struct Call {
  StackSpace& space;
  bool (*routine)(void*);
  void* argument;
  bool result;
};

}  // namespace

void StackSpace::run(void* data) {
  Call& call = *static_cast<Call*>(data);
  call.space.lowest_ = here() - (kFreshStack - kReserve);
  call.space.slack_ = kSlack;
  try {
    call.result = call.routine(call.argument);
  } catch (const std::exception&) {  // no exception may leave a thread
    nrerror(kNoStack);
  }
}

// A fresh stack is that of a thread which is waited for at once, so nothing ever runs beside the
// caller. Debuggers and sanitizers know how to walk a thread; they don't know hand-made stacks.
bool StackSpace::call(bool (*routine)(void*), void* argument) {
  const std::uintptr_t step = std::min(slack_, kSlackStep);
  const std::uintptr_t lowest_here = lowest_ - step;
  const std::uintptr_t slack_here = slack_ - step;
  Call call{*this, routine, argument, false};
  if (!run_on_own_thread(kFreshStack, run, &call)) nrerror(kNoStack);
  lowest_ = lowest_here;
  slack_ = slack_here;
  return call.result;
}

}  // namespace quantiverse
