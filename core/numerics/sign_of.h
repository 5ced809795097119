#pragma once

#include <cmath>

namespace quantiverse {

// The magnitude of `a` with the sign of `b`. A zero or a NaN in `b` counts as negative, which is
// why std::copysign won't do.
inline double sign_of(double a, double b) { return b > 0.0 ? std::fabs(a) : -std::fabs(a); }

}  // namespace quantiverse
