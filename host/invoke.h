#pragma once

#include <cstdint>
#include <span>
#include <variant>

namespace quantiverse::host {

// One argument as the machine passes it: a double, or anything else that fits a word.
using Slot = std::variant<std::intptr_t, double>;

// As many as there are registered functions with, and some more.
inline constexpr int kMostSlots = 8;

// Calls the function at `address`, which returns a pointer.
// REQUIRES: no more than kMostSlots.
void* invoke(void* address, std::span<const Slot> slots);

}  // namespace quantiverse::host
