#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "text/text_buf.h"

// How far a routine strays from a reference over a range.
namespace quantiverse {

using Routine = std::function<double(double, TextBuf&)>;
using Reference = std::function<long double(long double)>;

enum class Error { kAbsolute, kRelative };
// Where the method makes the error, a result that is much better is as wrong as a worse one:
// somebody has tightened a tolerance. Where the last bits of the C library make it, only the
// upper bound is held.
enum class Source { kMethod, kRounding };

struct Range {
  const char* name;
  double from, to;
  Error error;
  double largest;  // the largest error that was measured in the range
  Source source;
  Routine routine;
  Reference reference;
};

// `count` points from `from` to `to`, both included; in equal ratios when both are positive and
// more than a decade apart, else in equal steps.
inline std::vector<double> spread(double from, double to, int count) {
  std::vector<double> points;
  const bool ratios = from > 0.0 && to > 10.0 * from;
  for (int i = 0; i < count; ++i) {
    const double part = static_cast<double>(i) / (count - 1);
    points.push_back(ratios ? from * std::pow(to / from, part) : from + part * (to - from));
  }
  points.back() = to;
  return points;
}

// Holds the range to the error that was measured, and to silence.
inline void expect_accuracy(const Range& range, int count = 2000) {
  SCOPED_TRACE(range.name);
  double largest = 0.0;
  double where = 0.0;
  TextBuf err;
  for (const double x : spread(range.from, range.to, count)) {
    const long double value = range.routine(x, err);
    const long double exact = range.reference(x);
    long double error = std::fabs(value - exact);
    if (range.error == Error::kRelative) error /= std::fabs(exact);
    if (std::isnan(largest) || error <= largest) continue;  // the first NaN stays
    largest = static_cast<double>(error);
    where = x;
  }
  EXPECT_EQ(err.text(), "");
  EXPECT_LE(largest, 1.25 * range.largest) << "at " << where;
  if (range.source == Source::kMethod) {
    EXPECT_GE(largest, 0.5 * range.largest) << "at " << where;
  }
}

// A call with its value, to the last bit or NaN for NaN, and its whole text in `err`.
#define CALL(expression) #expression, []([[maybe_unused]] TextBuf & err) { return expression; }
struct Call {
  const char* name;
  std::function<double(TextBuf&)> call;
  double value;
  const char* message;
};

inline void expect_calls(const std::vector<Call>& calls) {
  for (const Call& row : calls) {
    SCOPED_TRACE(row.name);
    TextBuf err;
    const double value = row.call(err);
    if (std::isnan(row.value)) {
      EXPECT_TRUE(std::isnan(value)) << value;
    } else {
      EXPECT_EQ(value, row.value);
    }
    EXPECT_EQ(err.text(), row.message);
  }
}

// Values whose digits beyond the accuracy are results as well: they show every coefficient and
// every count of steps. The last three digits are the C library's.
inline void expect_digits(const std::vector<Call>& calls) {
  for (const Call& row : calls) {
    SCOPED_TRACE(row.name);
    TextBuf err;
    EXPECT_NEAR(row.call(err) / row.value, 1.0, 1e-13);
    EXPECT_EQ(err.text(), row.message);
  }
}

}  // namespace quantiverse
