#include "text/text_buf.h"

#include <array>
#include <charconv>

#include "text/numbers.h"

namespace quantiverse {

void TextBuf::append_double(double x) {
  std::array<char, kFormattedDoubleSize> digits;
  text_.append(digits.data(), format_double(x, digits));
}

void TextBuf::append_integer(int n) {
  std::array<char, 12> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), n);
  text_.append(digits.data(), end.ptr);
}

}  // namespace quantiverse
