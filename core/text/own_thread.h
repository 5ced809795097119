#pragma once

#include <cstddef>

namespace quantiverse {

// Runs `routine` on a thread of its own with so much stack, and waits for it.
// routine: must not throw.
// false: the system has no such thread to give; nothing ran.
bool run_on_own_thread(std::size_t stack_size, void (*routine)(void* argument), void* argument);

}  // namespace quantiverse
