#include "text/numbers.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <system_error>

#include "text/scanner.h"

namespace quantiverse {
namespace {

// All of these are exact.
constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

const char* skip_digits(const char* p, const char* stop) {
  while (p != stop && is_digit(*p)) ++p;
  return p;
}

// Reads digits as a whole number, behind those that `number` has already. It wraps.
const char* read_digits(const char* p, const char* stop, std::uint64_t& number) {
  for (; p != stop && is_digit(*p); ++p) number = number * 10 + static_cast<unsigned>(*p - '0');
  return p;
}

// Where the exponent that may start at `p` ends; `p` itself if there is none.
const char* skip_exponent(const char* p, const char* stop) {
  if (p == stop || (*p != 'e' && *p != 'E' && *p != 'd' && *p != 'D')) return p;
  const char* digits = p + 1;
  if (digits != stop && (*digits == '+' || *digits == '-')) ++digits;
  const char* end = skip_digits(digits, stop);
  return end == digits ? p : end;
}

// from_chars tells only that a value doesn't fit. Whether it was too large or too small is
// where its first digit other than zero stands, moved by the exponent.
bool is_too_large(std::string_view number) {
  const std::size_t mark = number.find_first_of("eE");
  const std::string_view mantissa = number.substr(0, mark);
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const std::size_t first = mantissa.find_first_of("123456789");
  const bool shrinks = mark != std::string_view::npos && number[mark + 1] == '-';
  if (mark == std::string_view::npos) return first < point;

  // 19 digits of exponent outweigh any mantissa that fits in memory.
  std::string_view digits = number.substr(mark + 1);
  digits.remove_prefix(digits.find_first_of("0123456789"));
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  if (digits.size() > 18) return !shrinks;
  long long exponent = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
  const long long places = static_cast<long long>(point) - static_cast<long long>(first);
  return places + (shrinks ? -exponent : exponent) > 0;
}

double to_double(const char* first, const char* last) {
  double value = 0.0;
  if (std::from_chars(first, last, value).ec == std::errc::result_out_of_range) {
    const bool large = is_too_large({first, static_cast<std::size_t>(last - first)});
    return large ? std::numeric_limits<double>::infinity() : 0.0;
  }
  return value;
}

// A number that is written with six digits, d.ddddd * 10^exponent.
struct SixDigits {
  std::uint32_t digits;  // 100000 to 999999
  int exponent;
};

double scale_to_six_digits(double x, int exponent) {
  const int power = 5 - exponent;
  return power >= 0 ? x * kPowersOfTen[power] : x / kPowersOfTen[-power];
}

// Six digits of most numbers need no more than one multiplication: the product is off by at most
// one part in 2^53, which is less than 2e-10, so unless it lies that close to a half its rounding
// is certain. Where it isn't, or the number is very large or small, the library decides.
// REQUIRES: x is not negative.
bool find_six_digits(double x, SixDigits& six) {
  constexpr double kUncertain = 1e-9;
  if (!(x >= 1e-15 && x < 1e22)) return false;
  constexpr int kBitsOfFraction = 52;
  constexpr int kBias = 1023;
  const int binary = static_cast<int>(std::bit_cast<std::uint64_t>(x) >> kBitsOfFraction) - kBias;
  // 1233/4096 is log10(2); the estimate is at most one too small.
  six.exponent = (binary * 1233 + 4096 * 64) / 4096 - 64;
  double scaled = scale_to_six_digits(x, six.exponent);
  if (scaled >= 1e6) scaled = scale_to_six_digits(x, ++six.exponent);
  if (scaled < 1e5) scaled = scale_to_six_digits(x, --six.exponent);
  // Not right for ties, but those are uncertain. NOLINTNEXTLINE(bugprone-incorrect-roundings)
  six.digits = static_cast<std::uint32_t>(scaled + 0.5);
  if (std::fabs(scaled - six.digits) > 0.5 - kUncertain) return false;
  if (six.digits == 1000000) {
    six.digits = 100000;
    ++six.exponent;
  }
  return true;
}

// The digits of 0 to 99 as two characters, the first in the lower byte.
constexpr auto kPairsOfDigits = [] {
  std::array<std::uint16_t, 100> pairs{};
  for (unsigned i = 0; i < 100; ++i) {
    pairs[i] = static_cast<std::uint16_t>('0' + i / 10 + ('0' + i % 10) * 256);
  }
  return pairs;
}();

// Up to eight characters are held in a word, the first in the lowest byte: taking them apart in
// memory would make every load wait for smaller stores. Written are always eight.
void write_characters(std::uint64_t characters, char* out) {
  for (int i = 0; i < 8; ++i) out[i] = static_cast<char>(characters >> 8 * i & 0xFF);
}

// Writes as "%g" does and returns the end: without trailing zeros, and with an exponent below
// 1e-4 and from 1e6. Up to eight characters behind the end are written as well.
char* write_six_digits(const SixDigits& six, bool negative, char* out) {
  constexpr std::uint64_t kSixZeros = 0x303030303030;
  const std::uint64_t text = kPairsOfDigits[six.digits / 10000] |
                             std::uint64_t{kPairsOfDigits[six.digits / 100 % 100]} << 16 |
                             std::uint64_t{kPairsOfDigits[six.digits % 100]} << 32;
  // Up to the last that is no zero.
  const int count = (static_cast<int>(std::bit_width(text ^ kSixZeros)) + 7) / 8;

  if (negative) *out++ = '-';
  if (six.exponent < 0 && six.exponent >= -4) {
    constexpr std::uint64_t kZeroPoint = 0x30303030302E30;  // "0.00000"
    write_characters(kZeroPoint, out);
    out += 1 - six.exponent;
    write_characters(text, out);
    return out + count;
  }
  const bool is_scientific = six.exponent < 0 || six.exponent > 5;
  const int whole = is_scientific ? 1 : six.exponent + 1;
  write_characters(text, out);
  if (count > whole) {
    out[whole] = '.';
    write_characters(text >> 8 * whole, out + whole + 1);
    out += count + 1;
  } else {
    out += whole;
  }
  if (is_scientific) {
    *out++ = 'e';
    *out++ = six.exponent < 0 ? '-' : '+';
    write_characters(kPairsOfDigits[static_cast<std::size_t>(std::abs(six.exponent))], out);
    out += 2;
  }
  return out;
}

}  // namespace

bool scan_number(Cursor& expptr, double& result) {
  result = 0.0;
  const char* p = expptr.position;
  const char* const stop = expptr.stop;
  while (p != stop && is_blank(*p)) ++p;
  bool negative = false;
  if (p != stop && (*p == '+' || *p == '-')) negative = *p++ == '-';

  const char* const first = p;
  std::uint64_t whole = 0;
  p = read_digits(p, stop, whole);
  std::ptrdiff_t digits = p - first;
  std::ptrdiff_t places = 0;
  if (p != stop && *p == '.') {
    const char* const fraction = p + 1;
    p = read_digits(fraction, stop, whole);
    places = p - fraction;
    digits += places;
  }
  if (digits == 0) return false;

  const char* const exponent = p;
  p = skip_exponent(p, stop);
  constexpr std::ptrdiff_t kExactDigits = 15;
  if (p == exponent && digits <= kExactDigits) {
    // Both are exact, so the quotient is the nearest double.
    result = static_cast<double>(whole) / kPowersOfTen[places];
  } else if (p != exponent && (*exponent == 'd' || *exponent == 'D')) {
    std::string with_e(first, p);
    with_e[static_cast<std::size_t>(exponent - first)] = 'e';
    result = to_double(with_e.data(), with_e.data() + with_e.size());
  } else {
    result = to_double(first, p);
  }
  if (negative) result = -result;
  expptr.position = p;
  return true;
}

std::size_t format_double(double x, std::array<char, kFormattedDoubleSize>& digits) {
  SixDigits six;
  if (find_six_digits(std::fabs(x), six)) {
    return static_cast<std::size_t>(write_six_digits(six, x < 0.0, digits.data()) - digits.data());
  }
  if (std::isnan(x)) x = std::numeric_limits<double>::quiet_NaN();
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), x, std::chars_format::general, 6);
  return static_cast<std::size_t>(end.ptr - digits.data());
}

std::int32_t truncate_to_int32(double x) {
  constexpr double kLimit = 2147483648.0;
  if (!(x > -kLimit - 1.0 && x < kLimit)) return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(x);
}

bool is_bad_double(double x) { return std::isnan(x) || x >= 1e39 || x <= -1e39; }

}  // namespace quantiverse
