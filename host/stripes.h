#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <thread>

// State that many threads change all the time lies in stripes: threads meet only where they happen
// to want the same one.
namespace quantiverse::host {

inline constexpr std::size_t kStripes = 16;

// As far apart as caches see memory, two lines at a time, so that writing one stripe leaves the
// others alone.
inline constexpr std::size_t kApart = 128;

// A lock that is held for some hundred instructions and hardly ever wanted by two threads. It costs
// one atomic operation, half of what a mutex does.
class BriefLock {
 public:
  void lock() {
    while (taken_.test_and_set(std::memory_order_acquire)) std::this_thread::yield();
  }
  void unlock() { taken_.clear(std::memory_order_release); }

 private:
  std::atomic_flag taken_;
};

template <class Stripe>
using Stripes = std::array<Stripe, kStripes>;

// This thread's own stripe, which it shares only if there are more threads than stripes.
inline std::size_t stripe_of_thread() {
  static std::atomic<std::size_t> threads = 0;
  thread_local const std::size_t number = threads++;
  return number % kStripes;
}

}  // namespace quantiverse::host
