#pragma once

#include <type_traits>

// Between a body and the processor.
namespace quantiverse {

// Runs `body`. A fault of the processor in it comes out as a CXlStructuredException where the
// system tells of faults (Windows); elsewhere the process ends. Nothing between the fault and here
// is destroyed.
void RunGuarded(void (*body)(void* argument), void* argument);

template <typename Body>
void RunGuarded(Body&& body) {
  using Plain = std::remove_reference_t<Body>;
  RunGuarded([](void* b) { (*static_cast<Plain*>(b))(); }, &body);
}

}  // namespace quantiverse
