#include "text/text_buf.h"

#include <gtest/gtest.h>

#include <limits>

namespace quantiverse {
namespace {

TEST(TextBuf, Appends) {
  TextBuf buf;
  EXPECT_TRUE(buf.is_empty_text());
  EXPECT_EQ(buf.last(), '\0');
  const char* const word = "word";
  buf.append_range(word, word + 3);
  buf.append_range(word + 3, word);  // backwards: nothing
  buf.append_until_any(" until; here", ";#");
  buf.append_until_any(";none", ";");
  buf.append_until_any(" all", ";");
  buf.append_three("<", "", ">");
  EXPECT_EQ(buf.text(), "wor until all<>");
  buf.clear_text();
  EXPECT_TRUE(buf.is_empty_text());
  buf.append_double(1.0 / 3.0);
  buf.append_text(" ");
  buf.append_double(-1e300);
  buf.append_text(" ");
  buf.append_integer(std::numeric_limits<int>::min());
  EXPECT_EQ(buf.text(), "0.333333 -1e+300 -2147483648");
}

TEST(TextBuf, AppendsItselfAndGivesItselfAway) {
  TextBuf buf;
  buf.append_text("a b");
  buf.append_buffer(buf);
  EXPECT_EQ(buf.last(), 'b');
  buf.remove_last();
  EXPECT_EQ(buf.release(), "a ba ");
  EXPECT_TRUE(buf.is_empty_text());
}

}  // namespace
}  // namespace quantiverse
