#pragma once

#include <cstdint>

extern "C" {

// Calls body(argument) inside a frame that the system's search for a handler finds. Assembler,
// since the compiler has no such frames. 0: the body came back. 1: the processor faulted in it; its
// exception's code is in `code`.
int QuantiverseGuardFrame(void (*body)(void* argument), void* argument, std::uint32_t* code);
}
