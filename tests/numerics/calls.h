#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "text/text_buf.h"

// What the tests of this folder share: calls with their values and messages. How near the values
// are to the right ones is measured for docs/functions.md.
namespace quantiverse {

inline constexpr double kInf = std::numeric_limits<double>::infinity();
inline constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

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
