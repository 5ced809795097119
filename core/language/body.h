#pragma once

#include <cstdint>

#include "language/compiled_stack.h"
#include "text/cursor.h"

namespace quantiverse {

// The lines between `begin` and `end`, kept in two forms: compiled, for the requests that run them
// again and again, and as a stretch of the call's text, which is read again to report them.
class Body {
 public:
  // `begin`, with the cursor right behind it. Starts over, whatever there was. The word can turn
  // up while a body is read again, behind another `begin` on its line; then the cursor's stop
  // moves to the end of the text, since the stretch that it was to stop at is no more.
  void open_body(Cursor& expptr);
  // None, as at first.
  void clear() {
    if (start_.position != nullptr) *this = Body();
  }
  // `end`, with the cursor right behind it. A body that is closed already stays as it is.
  // false: there is no body.
  bool close_body(const Cursor& expptr);

  [[nodiscard]] bool is_body_closed() const { return state_ == State::kClosed; }
  [[nodiscard]] bool is_defining_function() const {
    return start_.position != nullptr && end_ == nullptr;
  }

  // Chains the program of a statement that worked to the body, if one is open.
  void append_program(const Program& program) {
    if (state_ == State::kOpen) program_.append(program);
  }
  [[nodiscard]] const Program& program() const { return program_; }

  // Where reading again starts; it ends behind the word `end`. REQUIRES: is_body_closed().
  [[nodiscard]] Cursor replay_start() const;
  // To what replay_start() was before a replay.
  void put_back_start(const Cursor& start) { start_.position = start.position; }

 private:
  enum class State : std::uint8_t { kNone, kOpen, kClosed };

  State state_ = State::kNone;
  Cursor start_;  // behind `begin`, up to the end of the text
  const char* end_ = nullptr;
  Program program_;
};

}  // namespace quantiverse
