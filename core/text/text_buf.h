#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace quantiverse {

// Growable text: the output, the error of a line, every rendered unit.
// Owns its bytes. Appending is amortised constant, and clear_text keeps the
// storage, so that a buffer which is reused line after line stops allocating.
class TextBuf {
 public:
  // Appends [first, last). A range that runs backwards is empty.
  void append_range(const char* first, const char* last) {
    if (last > first) text_.append(first, last);
  }
  void append_text(std::string_view s) { text_.append(s); }
  // Appends `s` up to, not including, its first character that is in `stops`.
  void append_until_any(std::string_view s, std::string_view stops) {
    text_.append(s.substr(0, s.find_first_of(stops)));
  }
  void append_three(std::string_view a, std::string_view b, std::string_view c) {
    text_.append(a).append(b).append(c);
  }
  // Six significant digits in the format "%g", whatever the locale.
  void append_double(double x);
  void append_integer(int n);
  void append_buffer(const TextBuf& other) { text_.append(other.text_); }

  void clear_text() { text_.clear(); }
  void reserve(std::size_t capacity) { text_.reserve(capacity); }
  // In a buffer of errors, "not empty" is how every routine asks whether one is pending.
  [[nodiscard]] bool is_empty_text() const { return text_.empty(); }
  [[nodiscard]] std::string_view text() const { return text_; }
  [[nodiscard]] char last() const { return text_.empty() ? '\0' : text_.back(); }
  void remove_last() { text_.pop_back(); }

  // Hands the text to the caller; the buffer is empty afterwards.
  [[nodiscard]] std::string release() { return std::exchange(text_, std::string()); }

 private:
  std::string text_;
};

}  // namespace quantiverse
