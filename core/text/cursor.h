#pragma once

#include <string_view>

namespace quantiverse {

// A position in the call's text, and the position at which reading stops: the end of the text,
// or the end of the stretch that is being read again. The text outlives the cursor and does not
// move. Putting a cursor back is an assignment.
struct Cursor {
  const char* position = nullptr;
  const char* stop = nullptr;

  Cursor() = default;
  explicit Cursor(std::string_view text) : position(text.data()), stop(text.data() + text.size()) {}

  [[nodiscard]] bool at_stop() const { return position == stop; }
  // The current character; NUL at the stop, so that callers need no second test.
  [[nodiscard]] char peek() const { return at_stop() ? '\0' : *position; }
  // The character behind the current one. REQUIRES: not at_stop().
  [[nodiscard]] char peek_next() const { return position + 1 == stop ? '\0' : position[1]; }
  // REQUIRES: not at_stop().
  void step() { ++position; }

  // The text from here to the stop.
  [[nodiscard]] std::string_view rest() const {
    return {position, static_cast<std::size_t>(stop - position)};
  }
  // The text from here to `end`, which must not lie before it.
  [[nodiscard]] std::string_view until(const Cursor& end) const {
    return {position, static_cast<std::size_t>(end.position - position)};
  }
};

// Puts a cursor back on every way out of a routine but accept().
class Backtrack {
 public:
  explicit Backtrack(Cursor& cursor) : cursor_(cursor), from_(cursor) {}
  ~Backtrack() {
    if (!accepted_) cursor_ = from_;
  }
  Backtrack(const Backtrack&) = delete;
  Backtrack& operator=(const Backtrack&) = delete;

  bool accept() {
    accepted_ = true;
    return true;
  }
  [[nodiscard]] const Cursor& from() const { return from_; }

 private:
  Cursor& cursor_;
  Cursor from_;
  bool accepted_ = false;
};

}  // namespace quantiverse
