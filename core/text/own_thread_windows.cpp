#include <process.h>
#include <windows.h>

#include "text/own_thread.h"

// The system's threads, not those of POSIX on top of them: what implements these keeps something
// for every thread that it has seen, and a library may be loaded and unloaded any number of times.
namespace quantiverse {
namespace {

struct Start {
  void (*routine)(void*);
  void* argument;
};

unsigned __stdcall run(void* data) {
  const Start& start = *static_cast<Start*>(data);
  start.routine(start.argument);
  return 0;
}

}  // namespace

bool run_on_own_thread(std::size_t stack_size, void (*routine)(void* argument), void* argument) {
  Start start{routine, argument};
  const auto thread =
      reinterpret_cast<HANDLE>(_beginthreadex(nullptr, static_cast<unsigned>(stack_size), run,
                                              &start, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr));
  if (thread == nullptr) return false;
  const bool is_done = WaitForSingleObject(thread, INFINITE) == WAIT_OBJECT_0;
  CloseHandle(thread);
  return is_done;
}

}  // namespace quantiverse
