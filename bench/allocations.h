#pragma once

#include <cstddef>

namespace quantiverse::bench {

// How often this process has asked `new` for memory. A program that links this counts from its
// start; the operators are replaced in a source of their own, where nothing inlines them.
std::size_t allocations();

}  // namespace quantiverse::bench
