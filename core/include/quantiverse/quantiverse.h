#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace quantiverse {

// Runs a text of the calculator language, one statement a line, and gives back a text with the
// echo of every line and its result or error:
//
//   interpret_dimensional_input_lines("5 ft; m\n")
//       == "[  1 ] 5 ft; m\n        = 1.524 m\n\n"
//
// Nothing is kept from one call to the next: variables, units, bodies and unit systems of the text
// end with it. The one exception: a `solve` that has failed and that no good statement has come
// behind is still open, and the first good statement of the thread's next text closes it, in place
// of showing its value.
// A NUL ends the text. Errors of the language are text in the result; the function never throws
// and prints nothing. Only a failed allocation ends the process, with a message on standard error.
// Threads: may be called on any number of them at once; they don't meet.
// Cost: linear in the text, whatever is in it, and in the evaluations of its requests.
std::string interpret_dimensional_input_lines(std::string_view text);

// An interpreter to hold on to, in place of the one that each thread has behind the function
// above. One thread at a time.
class Calculator {
 public:
  Calculator();
  ~Calculator();
  Calculator(Calculator&&) noexcept;
  Calculator& operator=(Calculator&&) noexcept;

  // As interpret_dimensional_input_lines.
  std::string interpret(std::string_view text);
  // The same in storage of the calculator, good until it is used again: for many short texts.
  // REQUIRES: `text` doesn't lie there.
  std::string_view interpret_in_place(std::string_view text);
  // As good as new for the next text: a `solve` that is still open is dropped.
  void reset();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

// The version of the library, "1.2.3".
const char* version();

}  // namespace quantiverse
