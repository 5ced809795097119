#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "text/cursor.h"

// The one place where doubles and text meet. Nothing here depends on the locale.
namespace quantiverse {

inline constexpr std::size_t kFormattedDoubleSize = 32;

// Reads a decimal number at the cursor: blanks and tabs, a sign, digits with an optional
// point, and an exponent behind one of e, E, d, D. The letter of an exponent without digits is
// left alone: "5d" is 5 in front of a "d". No hexadecimal, no spelling of infinity or NaN,
// since those would swallow names. Too large gives an infinity, too small a zero.
// true:  `result` is the number, the cursor stands behind it.
// false: no number here, `result` is 0, the cursor has not moved.
bool scan_number(Cursor& expptr, double& result);

// Writes `x` as "%g" does, without a terminator, and returns the length.
// Every NaN is "nan": its sign is an accident of the instruction that made it.
std::size_t format_double(double x, std::array<char, kFormattedDoubleSize>& digits);

// The whole part of `x`, or -2147483648 where that does not fit or `x` is a NaN.
std::int32_t truncate_to_int32(double x);

// A NaN, or a magnitude of at least 1e39: what a unit's scale must not become.
bool is_bad_double(double x);

}  // namespace quantiverse
