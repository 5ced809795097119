#pragma once

#include <cstdint>
#include <span>

namespace quantiverse::host {

// One argument as the machine passes it: a double, or anything else that fits a word.
struct Slot {
  bool is_double = false;
  double number = 0.0;
  std::intptr_t word = 0;
};

// As many as there are registered functions with, and some more.
inline constexpr int kMostSlots = 8;

// Calls the function at `address`, which returns a pointer.
// REQUIRES: no more than kMostSlots.
void* invoke(void* address, std::span<const Slot> slots);

}  // namespace quantiverse::host
