#pragma once

#include <cstdint>

namespace quantiverse {

// How deeply a text may nest is a matter of memory, not of the stack that the caller happens to
// stand on. A routine that can recurse asks is_low() first and, if so, goes on through
// call_on_fresh_stack(). What lies between two such questions must fit in the reserve that is
// left then, which is what the budgets below leave of any usual stack.
class StackSpace {
 public:
  // Starts a call: so much of the caller's stack may be used from here on.
  void begin_call() {
    lowest_ = here() - kCallerBudget;
    slack_ = kSlack;
  }

  [[nodiscard]] bool is_low() const { return here() < lowest_; }

  // Runs `routine` on a stack of its own while this one waits, and returns its answer.
  // Ends in nrerror where no further stack can be had.
  template <typename Routine>
  bool call_on_fresh_stack(Routine routine) {
    return call([](void* r) { return (*static_cast<Routine*>(r))(); }, &routine);
  }

 private:
  static constexpr std::uintptr_t kCallerBudget = 128UL * 1024;
  // What a stack may use beyond its budget, a step more after each fresh stack, so that not each
  // of many siblings at the depth where it runs low starts a stack of its own.
  static constexpr std::uintptr_t kSlack = 64UL * 1024;
  static constexpr std::uintptr_t kSlackStep = 4UL * 1024;

  static std::uintptr_t here() {
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  }
  bool call(bool (*routine)(void*), void* argument);
  static void run(void* data);

  std::uintptr_t lowest_ = 0;  // stacks grow downwards
  std::uintptr_t slack_ = 0;
};

}  // namespace quantiverse
