#pragma once

#include <atomic>
#include <thread>

namespace quantiverse {

// A lock for a few instructions, to be used with std::lock_guard. Unlike a mutex it is made by the
// compiler on every system, and leaves nothing behind in a library that is unloaded.
class SpinLock {
 public:
  void lock() {
    while (is_taken_.test_and_set(std::memory_order_acquire)) std::this_thread::yield();
  }
  void unlock() { is_taken_.clear(std::memory_order_release); }

 private:
  std::atomic_flag is_taken_;
};

}  // namespace quantiverse
