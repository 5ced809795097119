#include "text/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "support/cases.h"

namespace quantiverse {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kLeast = std::numeric_limits<double>::denorm_min();

std::uint64_t bits(double x) {
  std::uint64_t b = 0;
  std::memcpy(&b, &x, sizeof b);
  return b;
}

std::string formatted(double x) {
  std::array<char, kFormattedDoubleSize> digits;
  return {digits.data(), format_double(x, digits)};
}

std::string printed(double x) {
  char text[64];
  std::snprintf(text, sizeof text, "%g", x);
  return text;
}

TEST(ScanNumber, Accepts) {
  for (const Case& c : cases("text/numbers.txt", "is a number", 3)) {
    Cursor expptr{std::string_view(c[0])};
    double value = kNaN;
    EXPECT_TRUE(scan_number(expptr, value)) << c[0];
    EXPECT_EQ(bits(value), bits(number(c[1]))) << c[0] << " gave " << value;
    EXPECT_EQ(expptr.rest(), c[2]) << c[0];
  }
}

TEST(ScanNumber, RefusesAndStaysPut) {
  for (const Case& c : cases("text/numbers.txt", "is no number", 1)) {
    Cursor expptr{std::string_view(c[0])};
    double value = kNaN;
    EXPECT_FALSE(scan_number(expptr, value)) << c[0];
    EXPECT_EQ(bits(value), bits(0.0)) << c[0];
    EXPECT_EQ(expptr.rest(), c[0]);
  }
}

// A stop in front of more digits ends the number, and nothing behind it is looked at.
TEST(ScanNumber, EndsAtTheStop) {
  const std::string_view text = "12.5e3";
  const double expected[] = {0, 1, 12, 12, 12.5, 12.5, 12500};
  const std::size_t taken[] = {0, 1, 2, 3, 4, 4, 6};
  for (std::size_t stop = 0; stop <= text.size(); ++stop) {
    Cursor expptr(text.substr(0, stop));
    double value = kNaN;
    scan_number(expptr, value);
    EXPECT_EQ(value, expected[stop]) << stop;
    EXPECT_EQ(static_cast<std::size_t>(expptr.position - text.data()), taken[stop]) << stop;
  }
}

TEST(ScanNumber, HugeDigitStrings) {
  const std::string nines(100000, '9');
  const std::string zeros(100000, '0');
  // clang-format off
  const struct { std::string text; double value; } cases[] = {
      {nines, kInf}, {"-" + nines, -kInf}, {zeros + "5", 5}, {"0." + zeros + "1", 0},
      {"0." + zeros + "1e100001", 1}, {"1" + zeros + "e-100000", 1}, {"1" + zeros + "d-100000", 1},
      {"1" + zeros + "e-99000", kInf}, {"0." + zeros + "1e99000", 0}, {"1e" + zeros + "3", 1000},
      {"1e-" + nines, 0}, {"1" + zeros + "." + zeros + "e" + nines, kInf}, {"0." + nines, 1},
  };
  // clang-format on
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    Cursor expptr{std::string_view(cases[i].text)};
    double value = kNaN;
    EXPECT_TRUE(scan_number(expptr, value)) << i;
    EXPECT_EQ(bits(value), bits(cases[i].value)) << i << " gave " << value;
    EXPECT_TRUE(expptr.at_stop()) << i;
  }
}

// Any mixture of the characters of a number is read as the C library reads it.
TEST(ScanNumber, AgreesWithStrtod) {
  std::mt19937 random(1);
  const std::string_view alphabet = "0123456789012345.eE+-";
  for (int round = 0; round < 100000; ++round) {
    std::string text(random() % 28, ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    char* end = nullptr;
    const double expected = std::strtod(text.c_str(), &end);
    Cursor expptr{std::string_view(text)};
    double value = kNaN;
    ASSERT_EQ(scan_number(expptr, value), end != text.c_str()) << text;
    ASSERT_EQ(bits(value), bits(expected)) << text;
    ASSERT_EQ(expptr.rest(), end) << text;
  }
}

TEST(FormatDouble, AgreesWithPrintf) {
  std::mt19937_64 random(2);
  for (int round = 0; round < 50000; ++round) {
    const std::uint64_t b = random();
    double any = 0;
    std::memcpy(&any, &b, sizeof any);
    const double near_half =
        (static_cast<double>(b % 1000000) + 0.5) * std::pow(10, round % 46 - 24);
    for (const double x :
         {any, std::ldexp(any, -1000),       // all magnitudes, and many denormals
          static_cast<double>(b >> 41) / 8,  // wholes and exact halves
          static_cast<double>(b >> 38) * 5,  // halves above the sixth digit
          near_half, std::nextafter(near_half, 0), std::nextafter(near_half, kInf)}) {
      if (std::isnan(x)) continue;
      ASSERT_EQ(formatted(x), printed(x));
    }
  }
  for (const double x : {0.0, -0.0, kInf, -kInf, kLeast, 1e-4, 9.999995e-5, 9.9999949e-5, 999999.4,
                         999999.5, 1e6, 0.1 + 0.2, 1e22, 1e23, 1e-15, 9e-16}) {
    EXPECT_EQ(formatted(x), printed(x));
  }
  EXPECT_EQ(formatted(kNaN), "nan");
  EXPECT_EQ(formatted(-kNaN), "nan");
}

TEST(TruncateToInt32, CutsAndMarks) {
  for (const Case& c : cases("text/numbers.txt", "whole part", 2)) {
    EXPECT_EQ(truncate_to_int32(number(c[0])), number(c[1])) << c[0];
  }
}

TEST(IsBadDouble, StartsAtTenToThe39) {
  for (const double x : {1e39, -1e39, kInf, -kInf, kNaN}) EXPECT_TRUE(is_bad_double(x)) << x;
  for (const double x : {std::nextafter(1e39, 0), -std::nextafter(1e39, 0), 0.0, kLeast}) {
    EXPECT_FALSE(is_bad_double(x)) << x;
  }
}

}  // namespace
}  // namespace quantiverse
