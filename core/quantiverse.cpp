#include "quantiverse/quantiverse.h"

#include <cstdlib>
#include <cstring>

#include "builtins/function_table.h"
#include "language/interpreter.h"
#include "quantiverse/c.h"
#include "text/text_buf.h"
#include "text/vectors.h"

namespace quantiverse {

struct Calculator::State {
  Interpreter interpreter{builtin_functions()};
  TextBuf output;
};

Calculator::Calculator() : state_(std::make_unique<State>()) {}
Calculator::~Calculator() = default;
Calculator::Calculator(Calculator&&) noexcept = default;
Calculator& Calculator::operator=(Calculator&&) noexcept = default;

std::string Calculator::interpret(std::string_view text) {
  TextBuf output;
  state_->interpreter.interpret(text, output);
  return output.release();
}

std::string_view Calculator::interpret_in_place(std::string_view text) {
  TextBuf& output = state_->output;
  // A long one doesn't leave its storage behind for the next.
  constexpr std::size_t kUsualOutput = std::size_t{64} * 1024;
  if (output.text().size() > kUsualOutput) output = TextBuf();
  output.clear_text();
  state_->interpreter.interpret(text, output);
  return output.text();
}

void Calculator::reset() { state_->interpreter.request = Request(); }

std::string interpret_dimensional_input_lines(std::string_view text) {
  // One for each thread, so that calls on different threads never meet while those on one thread
  // share their storage.
  static thread_local Interpreter interpreter(builtin_functions());
  TextBuf output;
  interpreter.interpret(text, output);
  return output.release();
}

const char* version() { return QUANTIVERSE_VERSION; }

}  // namespace quantiverse

char* quantiverse_interpret(const char* text, size_t length) {
  const std::string result =
      quantiverse::interpret_dimensional_input_lines(std::string_view(text, length));
  auto* copy = static_cast<char*>(std::malloc(result.size() + 1));
  if (copy == nullptr) quantiverse::nrerror("Allocation failure in quantiverse_interpret().");
  std::memcpy(copy, result.c_str(), result.size() + 1);
  return copy;
}

void quantiverse_free(char* result) { std::free(result); }
