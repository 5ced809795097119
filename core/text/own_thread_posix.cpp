#include <pthread.h>

#include "text/own_thread.h"

namespace quantiverse {
namespace {

struct Start {
  void (*routine)(void*);
  void* argument;
};

void* run(void* data) {
  const Start& start = *static_cast<Start*>(data);
  start.routine(start.argument);
  return nullptr;
}

}  // namespace

bool run_on_own_thread(std::size_t stack_size, void (*routine)(void* argument), void* argument) {
  Start start{routine, argument};
  pthread_attr_t attributes;
  pthread_t thread;
  if (pthread_attr_init(&attributes) != 0) return false;
  const bool is_started = pthread_attr_setstacksize(&attributes, stack_size) == 0 &&
                          pthread_create(&thread, &attributes, run, &start) == 0;
  pthread_attr_destroy(&attributes);
  return is_started && pthread_join(thread, nullptr) == 0;
}

}  // namespace quantiverse
