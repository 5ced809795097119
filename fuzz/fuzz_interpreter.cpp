// The door: any bytes are a text. It must come back, the same from interpreters that have seen
// other texts, once what those have left open is closed, and from a fresh one.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quantiverse/quantiverse.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  quantiverse::interpret_dimensional_input_lines("0");
  const std::string kept = quantiverse::interpret_dimensional_input_lines(text);
  const std::string fresh = quantiverse::Calculator().interpret(text);
  if (kept != fresh) std::abort();
  static quantiverse::Calculator calculator;
  calculator.reset();
  if (calculator.interpret_in_place(text) != fresh) std::abort();
  if (!kept.empty() && !kept.ends_with("\n")) std::abort();
  return 0;
}
